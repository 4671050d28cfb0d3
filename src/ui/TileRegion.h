// A region made of square tiles: coarse, but cheap to put together from many small things.
#pragma once

#include <QRectF>
#include <QRegion>
#include <QSize>
#include <vector>

class TileRegion
{
public:
    explicit TileRegion(const QSize &area); // nothing is covered yet

    // Covers every tile that the rectangle touches; what is outside of the area is left out.
    void cover(const QRectF &rect);

    QRegion region() const;

private:
    bool isCovered(int column, int row) const;
    void appendRuns(int row, std::vector<QRect> &runs) const;
    int endOfRun(int column, int row) const; // the first column from there on that is not covered

    int columns;
    int rows;
    std::vector<char> tiles; // row by row
};
