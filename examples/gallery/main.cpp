#include "gallery/Gallery.h"

#include <QApplication>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Gallery gallery;
    gallery.show();
    return QApplication::exec();
}
