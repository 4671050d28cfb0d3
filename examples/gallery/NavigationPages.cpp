// The parts of the sidebar.
#include "gallery/GalleryPages.h"
#include "ui/NavButton.h"
#include "ui/SidebarNav.h"

#include <QHBoxLayout>
#include <QStyle>
#include <QVBoxLayout>

namespace gallery {

QWidget *createNavButton(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    const QIcon icon = page->style()->standardIcon(QStyle::SP_DesktopIcon);
    for (const bool active : {false, true}) {
        auto *button = new NavButton(QStringLiteral("Press me"), icon, page);
        button->setFixedWidth(200);
        button->setExpanded(true);
        button->setActive(active);
        layout->addWidget(button);
    }
    layout->addStretch(1);
    return page;
}

QWidget *createSidebar(QWidget *parent)
{
    QVBoxLayout *layout = createPage(parent);
    QWidget *page = layout->parentWidget();
    auto *sidebar = new SidebarNav(page);
    const QStyle *style = page->style();
    sidebar->addItem(QStringLiteral("Home"), style->standardIcon(QStyle::SP_DesktopIcon), 0);
    sidebar->addItem(QStringLiteral("Files"), style->standardIcon(QStyle::SP_DirIcon), 1);
    sidebar->addItem(QStringLiteral("Trash"), style->standardIcon(QStyle::SP_TrashIcon), 2);
    sidebar->setCurrentIndex(0);
    QObject::connect(sidebar, &SidebarNav::navSelected, sidebar, &SidebarNav::setCurrentIndex);
    auto *row = new QHBoxLayout;
    row->addWidget(sidebar);
    row->addStretch(1);
    layout->addLayout(row);
    return page;
}

} // namespace gallery
