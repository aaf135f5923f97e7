#include <new>

#include "plugin/DlgSetupMode.h"

extern "C" CDlgBase* GetDialog() {
    try {
        return new CDlgSetupMode;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
