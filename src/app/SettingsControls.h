// What the settings page is put together with. All widgets become children of the card.
#pragma once

#include <QStringList>

class GlassCard;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSlider;
class QWidget;

namespace settingscontrols {

struct Range
{
    int from = 0;
    int to = 0;
};

QSlider *createSlider(GlassCard *card, const Range &range, int initial);
QCheckBox *createBox(GlassCard *card, const QString &text); // checked
QComboBox *createChoice(GlassCard *card, const QStringList &items, int initial);
QPushButton *createButton(GlassCard *card, const QString &text);

// These go to the end of the card.
void addNote(GlassCard *card, const QString &text);
QGridLayout *addGrid(GlassCard *card);

// A label and its control. A screen reader calls the control by the label's text.
QLabel *addRow(QGridLayout *grid, int row, const QString &text, QWidget *control);

} // namespace settingscontrols
