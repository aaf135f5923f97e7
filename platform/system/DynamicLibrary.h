// Dynamic libraries loaded by name for the moment they are needed.
#pragma once

#include <cstddef>
#include <string>

#include "platform/system/Export.h"

/// A loaded library; released with the object.
class PLATFORM_API CDynamicLibrary {
  public:
    /// Loads a library: the executable's folder first, then the system's search, which knows the
    /// folder of the platform's own libraries. The platform's file name extension takes the place
    /// of the one in `strName` (OnscreenKeyboard.dll finds OnscreenKeyboard.so). A library that
    /// cannot be loaded gives an empty object.
    explicit CDynamicLibrary(const std::wstring& strName);
    ~CDynamicLibrary();
    CDynamicLibrary(const CDynamicLibrary&) = delete;
    CDynamicLibrary& operator=(const CDynamicLibrary&) = delete;

    explicit operator bool() const { return m_hModule != nullptr; }

    /// An exported function, or null.
    template <class Function>
    Function* GetFunction(const char* pName) const {
        return reinterpret_cast<Function*>(FindSymbol(pName));
    }

  private:
    void* FindSymbol(const char* pName) const;

    void* m_hModule = nullptr;
};

/// How a resource library hands out its pictures: an exported C function of this type, named
/// "FindPicture". It gives an SVG or PNG file's bytes, which live as long as the library is loaded,
/// or null when there is no picture of that number.
using FindPictureFunction = const unsigned char*(unsigned nID, std::size_t* pSize);
