// A file that takes the place of an older one only when it is complete.
#pragma once

#include <string>

#include "platform/system/File.h"
#include "platform/system/Interrupt.h"
#include "platform/system/Progress.h"

/// Writes a new version of a file beside the old one and puts it in its place in one step.
///
/// Everything goes to a temporary file in the target's folder. Commit brings it to the disk and
/// renames it over the target; until then, and at any failure before it, the old file is whole. An
/// object that is destroyed or closed without Commit removes its temporary file. One that a killed
/// process left behind is removed by the same user's next save in that folder; it is told from one
/// of a save still running by the lock that a running save holds on it.
///
/// The new file keeps the permissions of the old one, and its owner and group as far as that is
/// allowed; a group that it could not keep costs it what only that group might do. A symbolic link
/// stays and its target is replaced. A target that is no regular file (a device, a pipe that
/// somebody reads from) cannot be replaced and is written directly.
/// Errors: CFileException with the target's path; one that comes after the renaming says that the
/// new file is in place.
class PLATFORM_API CReplaceFile : public CFile {
  public:
    /// Opens the temporary file; fails where the target itself could not be written.
    explicit CReplaceFile(const std::wstring& strPath);
    ~CReplaceFile() override;

    /// Puts the new file in the target's place, durably, and closes it. Called once, after the last
    /// Write. The way to the disk may take seconds.
    /// @param pProgress told of nothing but the end, again and again while the disk is waited for;
    ///        may stop the wait until the new file is in place. Null: nobody
    /// @throws also CUserException
    void Commit(IProgress* pProgress = nullptr);

    /// Gives the new file up.
    void Close() override;

  private:
    int CreateTemporary(unsigned nMode);
    void TakeOverAttributes(int hOldFile);
    std::string GetFolder() const;

    std::string m_strTarget;     ///< links resolved
    std::string m_strTemporary;  ///< empty: written directly
    CUnfinishedFile m_unfinished;
};
