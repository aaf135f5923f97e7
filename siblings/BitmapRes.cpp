#include "siblings/BitmapRes.h"

#include "siblings/Pictures.h"

const unsigned char* FindPicture(unsigned nID, std::size_t* pSize) {
    for (const Picture& picture : AllPictures()) {
        if (picture.m_nID != nID) continue;
        if (pSize) *pSize = picture.m_svg.size();
        return reinterpret_cast<const unsigned char*>(picture.m_svg.data());
    }
    if (pSize) *pSize = 0;
    return nullptr;
}
