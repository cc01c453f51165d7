#pragma once
// TPoint: a position in a document, X a 0-based column and Y a 0-based line.

namespace zorfa::text {

struct TPoint {
    int X = 0;
    int Y = 0;
    friend bool operator==(const TPoint&, const TPoint&) = default;
    // Document order: by line, then by column.
    friend bool operator<(const TPoint& a, const TPoint& b) { return a.Y != b.Y ? a.Y < b.Y : a.X < b.X; }
    friend bool operator<=(const TPoint& a, const TPoint& b) { return !(b < a); }
};

}  // namespace zorfa::text
