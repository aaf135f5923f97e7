// What becomes of a person's files: told where one is saved, loaded or exported as a whole, heard
// by whoever shows it. Teller and listener need not know each other; one may stand in the host and
// the other in a library that it loads.
#pragma once

#include <functional>
#include <string>

#include "platform/system/Exceptions.h"
#include "platform/system/Types.h"

enum class FileWork : BYTE { Save, Load, Export };

/// How work on a file has ended. What it refers to lives as long as the call that it is given to.
struct FileEvent {
    FileWork m_work;
    const std::wstring& m_strPath;  ///< as whoever did the work was given it
    const CException* m_pError;     ///< why it failed; null: it is done
};

/// Hears of every file from when it is made until it is destroyed; afterwards nothing calls it any
/// more.
///
/// The function is called on the thread that has worked, one call at a time. It must be quick, and
/// must not make or destroy a listener. What it finds no memory for it leaves out by throwing
/// std::bad_alloc, and nothing else.
class PLATFORM_API CFileListener {
  public:
    explicit CFileListener(std::function<void(const FileEvent&)> onEvent);
    ~CFileListener();
    CFileListener(const CFileListener&) = delete;
    CFileListener& operator=(const CFileListener&) = delete;

  private:
    friend PLATFORM_API void TellFileListeners(const FileEvent& event) noexcept;
    std::function<void(const FileEvent&)> m_onEvent;
};

PLATFORM_API void TellFileListeners(const FileEvent& event) noexcept;

/// Does work on a file and tells the listeners how it ended. Of work that the person has stopped
/// they hear nothing.
/// @throws what the work throws, for want of memory CMemoryException
template <class Work>
void DoFileWork(FileWork kind, const std::wstring& strPath, Work work) {
    try {
        CallWithMemoryException(work);
    } catch (const CUserException&) {
        throw;
    } catch (const CException& error) {
        TellFileListeners({kind, strPath, &error});
        throw;
    }
    TellFileListeners({kind, strPath, nullptr});
}
