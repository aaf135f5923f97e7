// Feeds arbitrary bytes to the reader of language files.
#include <cstdlib>

#include "ui/LanguageLine.h"
#include "ui/LanguageTable.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    const std::span bytes(pData, nSize);
    CLanguageTable table;
    ParseLanguageFile(bytes, table);
    // A line takes at least four tabs and its number.
    if (table.GetCount() * 10 > nSize + 10) std::abort();
    ParseFirstLine(bytes);
    return 0;
}
