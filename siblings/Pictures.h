// The button pictures, as SVG files in memory.
#pragma once

#include <span>
#include <string_view>

struct Picture {
    unsigned m_nID;
    std::string_view m_svg;
};

/// Every picture of siblings/pictures, numbered by its file's name. Lives as long as the program.
std::span<const Picture> AllPictures();
