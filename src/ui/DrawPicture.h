// Drawing a finished picture, pixel for pixel, as part of a repaint.
#pragma once

class QImage;
class QPainter;
class QPoint;

// Does what painter.drawImage(position, picture) does, at most 1 of 255 off in any channel. The toolkit does it at once
// where what is to be repainted is a rectangle. Everything else, and be it only a window with rounded corners, it takes apart
// into lines and hands them to several threads, which costs more than the drawing. Here a region of a few rectangles is
// drawn rectangle by rectangle, and one of many small ones straight into the memory behind the painter.
//
// `picture` is premultiplied ARGB32; the painter's world transform moves whole pixels only. GUI thread.
void drawPicture(QPainter &painter, const QPoint &position, const QImage &picture);
