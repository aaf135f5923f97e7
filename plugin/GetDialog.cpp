#include <new>

#include "platform/system/Exceptions.h"
#include "plugin/DlgSetupMode.h"

extern "C" CDlgBase* GetDialog() {
    try {
        return new CDlgSetupMode;
    } catch (const std::bad_alloc&) {
        return nullptr;
    } catch (const CMemoryException&) {
        return nullptr;
    }
}
