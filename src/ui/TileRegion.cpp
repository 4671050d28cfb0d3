#include "ui/TileRegion.h"

#include <QRect>
#include <algorithm>
#include <cmath>

namespace {

constexpr int kTile = 8; // px; the best of 8, 16 and 32 for a hundred dots

int tilesFor(int length)
{
    return (length + kTile - 1) / kTile;
}

int tileOf(double position, int count)
{
    return static_cast<int>(
        std::clamp(std::floor(position / kTile), -1.0, static_cast<double>(count)));
}

} // namespace

TileRegion::TileRegion(const QSize &area)
    : columns(tilesFor(area.width()))
    , rows(tilesFor(area.height()))
    , tiles(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows))
{ }

void TileRegion::cover(const QRectF &rect)
{
    const int left = std::max(tileOf(rect.left(), columns), 0);
    const int right = std::min(tileOf(rect.right(), columns), columns - 1);
    const int top = std::max(tileOf(rect.top(), rows), 0);
    const int bottom = std::min(tileOf(rect.bottom(), rows), rows - 1);
    for (int row = top; row <= bottom && left <= right; ++row) {
        const auto first = tiles.begin() + static_cast<std::ptrdiff_t>(row) * columns;
        std::fill(first + left, first + right + 1, 1);
    }
}

bool TileRegion::isCovered(int column, int row) const
{
    return tiles[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns)
                 + static_cast<std::size_t>(column)]
        != 0;
}

int TileRegion::endOfRun(int column, int row) const
{
    while (column < columns && isCovered(column, row)) {
        ++column;
    }
    return column;
}

// Of one row, from left to right.
void TileRegion::appendRuns(int row, std::vector<QRect> &runs) const
{
    int column = 0;
    while (column < columns) {
        const int end = endOfRun(column, row);
        if (end > column) {
            runs.emplace_back(column * kTile, row * kTile, (end - column) * kTile, kTile);
        }
        column = end + 1;
    }
}

QRegion TileRegion::region() const
{
    std::vector<QRect> runs; // in the order that a region keeps them in
    for (int row = 0; row < rows; ++row) {
        appendRuns(row, runs);
    }
    QRegion region;
    region.setRects(runs.data(), static_cast<int>(runs.size()));
    return region;
}
