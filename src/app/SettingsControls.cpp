#include "app/SettingsControls.h"

#include "ui/ChoiceBox.h"
#include "ui/GlassCard.h"
#include "ui/SwitchBox.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace settingscontrols {

namespace {

constexpr int kRowSpacing = 6;
constexpr int kColumnSpacing = 16;
constexpr int kLabelWidth = 170; // px, the same in all grids
constexpr int kSliderHeight = 24; // px; the handle grows under the mouse

} // namespace

void addNote(GlassCard *card, const QString &text)
{
    auto *note = new QLabel(text, card);
    note->setWordWrap(true);
    card->layout()->addWidget(note);
}

QGridLayout *addGrid(GlassCard *card)
{
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(kColumnSpacing);
    grid->setVerticalSpacing(kRowSpacing);
    grid->setColumnMinimumWidth(0, kLabelWidth);
    grid->setColumnStretch(1, 1);
    qobject_cast<QVBoxLayout *>(card->layout())->addLayout(grid);
    return grid;
}

QLabel *addRow(QGridLayout *grid, int row, const QString &text, QWidget *control)
{
    auto *label = new QLabel(text, control->parentWidget());
    control->setAccessibleName(text);
    // On Linux a combo box is named by what is chosen; its label tells what for.
    label->setBuddy(control);
    grid->addWidget(label, row, 0);
    grid->addWidget(control, row, 1);
    return label;
}

QSlider *createSlider(GlassCard *card, const Range &range, int initial)
{
    auto *slider = new PageControl<QSlider>(card);
    slider->setOrientation(Qt::Horizontal);
    slider->setMinimumHeight(kSliderHeight);
    slider->setRange(range.from, range.to);
    slider->setValue(initial);
    return slider;
}

QCheckBox *createBox(GlassCard *card, const QString &text)
{
    auto *box = new SwitchBox(text, card);
    box->setChecked(true);
    return box;
}

QComboBox *createChoice(GlassCard *card, const QStringList &items, int initial)
{
    auto *choice = new ChoiceBox(card);
    choice->addItems(items);
    choice->setCurrentIndex(initial);
    return choice;
}

QPushButton *createButton(GlassCard *card, const QString &text)
{
    auto *button = new PageControl<QPushButton>(card);
    button->setText(text);
    return button;
}

} // namespace settingscontrols
