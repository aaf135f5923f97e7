#include "siblings/BitmapRes.h"

#include "siblings/Pictures.h"

const unsigned char* FindPicture(unsigned nID, std::size_t* pSize) {
    for (const Picture& picture : AllPictures()) {
        if (picture.nID != nID) continue;
        if (pSize) *pSize = picture.svg.size();
        return reinterpret_cast<const unsigned char*>(picture.svg.data());
    }
    if (pSize) *pSize = 0;
    return nullptr;
}
