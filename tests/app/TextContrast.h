// Where a page shows text, and how well it stands out in a picture of the page.
#pragma once

#include "ui/Contrast.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QTableWidget>
#include <QTextEdit>
#include <algorithm>
#include <vector>

namespace textcontrast {

struct Text
{
    QString what;
    QRect place; // on the page
};

inline void addCells(QList<Text> &texts, const QTableWidget &table, const QWidget &page)
{
    const QPoint origin = table.viewport()->mapTo(&page, QPoint(0, 0));
    const QPoint header = table.horizontalHeader()->viewport()->mapTo(&page, QPoint(0, 0));
    for (int column = 0; column < table.columnCount(); ++column) {
        const QRect section(table.horizontalHeader()->sectionViewportPosition(column),
                            0,
                            table.columnWidth(column),
                            table.horizontalHeader()->height());
        texts.append({table.horizontalHeaderItem(column)->text(), section.translated(header)});
        if (const QTableWidgetItem *cell = table.item(0, column)) {
            texts.append({cell->text(), table.visualItemRect(cell).translated(origin)});
        }
    }
}

inline QString textOf(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        return label->text();
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
        return button->text();
    }
    if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        return box->currentText();
    }
    if (const auto *line = qobject_cast<const QLineEdit *>(widget)) {
        return line->text().isEmpty() ? line->placeholderText() : line->text();
    }
    const auto *text = qobject_cast<const QTextEdit *>(widget);
    return text != nullptr ? text->toPlainText().section(u'\n', 0, 0) : QString();
}

// What is switched off may be dim, and of a single thin letter no pixel has the letter's own colour.
inline QList<Text> textsOn(QWidget &page)
{
    QList<Text> texts;
    const auto widgets = page.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (!widget->isVisible() || !widget->isEnabled()) {
            continue;
        }
        if (const auto *table = qobject_cast<const QTableWidget *>(widget)) {
            addCells(texts, *table, page);
        } else if (const QString text = textOf(widget); text.trimmed().size() > 1) {
            const QRect visible = widget->visibleRegion().boundingRect();
            if (visible.height() == widget->height()) {
                texts.append({text, visible.translated(widget->mapTo(&page, QPoint(0, 0)))});
            }
        }
    }
    return texts;
}

// The contrast between the colour that most of the place shows and the one that stands out most from it, past a border.
inline double measure(const QImage &picture, const QRect &place)
{
    constexpr int kBorder = 4; // px
    constexpr std::size_t kShades =
        32; // of each of red, green and blue; colours that close are one
    constexpr int kStep = 8; // 256 / kShades
    const QRect inner =
        (place.height() > 4 * kBorder ? place.adjusted(kBorder, kBorder, -kBorder, -kBorder)
                                      : place)
            .intersected(picture.rect());
    std::vector<int> counts(kShades * kShades * kShades);
    for (int y = inner.top(); y <= inner.bottom(); ++y) {
        for (int x = inner.left(); x <= inner.right(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            const auto shade = [](int part) {
                return static_cast<std::size_t>(part / kStep);
            };
            ++counts.at((shade(qRed(pixel)) * kShades + shade(qGreen(pixel))) * kShades
                        + shade(qBlue(pixel)));
        }
    }
    const auto colour = [](std::size_t index) {
        const auto part = [](std::size_t shade) {
            return static_cast<int>(shade % kShades) * kStep + kStep / 2;
        };
        return QColor(part(index / kShades / kShades), part(index / kShades), part(index));
    };
    const auto most = std::max_element(counts.cbegin(), counts.cend());
    const QColor background = colour(static_cast<std::size_t>(most - counts.cbegin()));
    double best = 1;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] > 0) {
            best = std::max(best, testcolor::contrast(colour(i), background));
        }
    }
    return best;
}

} // namespace textcontrast
