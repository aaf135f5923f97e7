// How a segment of a path meets a rectangle.
#pragma once

#include "evaluation/Limits.h"

/// The sides by which a segment's line comes into the rectangle and leaves it again. Where it
/// passes a corner, that is the left or right one.
struct AreaMeeting {
    Side m_in;   ///< counts when the segment begins outside
    Side m_out;  ///< counts when it ends outside
};

/// None when a segment has no point in the rectangle, or no length. Exact.
std::optional<AreaMeeting> FindMeeting(const GridPoint& from, const GridPoint& to,
                                       const Area& area);

/// Whether a piece of path lies wholly beyond one side of the rectangle, or wholly inside; else it
/// may do anything.
enum class PieceMeeting : std::uint8_t { Outside, Inside, Any };
PieceMeeting FindPieceMeeting(const PathPiece& path, const Area& area);
