#include "pcconfig/PCConfigPage.h"

#include "pcconfig/ValueLabel.h"
#include "ui/SurfaceFrame.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPageSpacing = 12;
constexpr int kButtonSpacing = 10;
constexpr int kGridSpacing = 12;
constexpr QMargins kCardMargins(14, 12, 14, 12);
constexpr int kCardSpacing = 8;
constexpr int kAccentLineHeight = 2;
constexpr int kRowSpacingX = 12;
constexpr int kRowSpacingY = 6;

struct Card
{
    const char *title;
    PCConfigPage::Section PCConfigPage::*section;
    std::array<const char *, 5> keys; // null where there are fewer
    int row;
    int column;
    int columns;
};

constexpr std::array<Card, 7> kCards{{
    {"OS", &PCConfigPage::osSection, {"Name", "Version", "Build", "Kernel", "Machine"}, 0, 0, 1},
    {"CPU",
     &PCConfigPage::cpuSection,
     {"Name", "Manufacturer", "Cores", "Logical Processors", "Max Clock (MHz)"},
     0,
     1,
     1},
    {"GPU", &PCConfigPage::gpuSection, {"Name", "VRAM", "Driver", "Resolution"}, 1, 0, 1},
    {"RAM", &PCConfigPage::ramSection, {"Total", "Available", "Speed", "Type"}, 1, 1, 1},
    {"Storage",
     &PCConfigPage::storageSection,
     {"System Drive", "Total", "Free", "Filesystem"},
     2,
     0,
     1},
    {"Motherboard",
     &PCConfigPage::motherboardSection,
     {"Manufacturer", "Product", "Serial"},
     2,
     1,
     1},
    {"Display",
     &PCConfigPage::displaySection,
     {"Primary", "Resolution", "Refresh", "Scale"},
     3,
     0,
     2},
}};

QList<QString> keysOf(const Card &card)
{
    QList<QString> keys;
    for (const char *key : card.keys) {
        if (key != nullptr) {
            keys.append(QString::fromLatin1(key));
        }
    }
    return keys;
}

QString unknown()
{
    return u"Unknown"_s;
}

// What a screen reader says of a value by itself.
QString announcement(const QString &key, const QString &text)
{
    return key + u": "_s + text;
}

QFormLayout *createForm()
{
    auto *form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->setFormAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->setHorizontalSpacing(kRowSpacingX);
    form->setVerticalSpacing(kRowSpacingY);
    return form;
}

void addTitle(QVBoxLayout *layout, const QString &title, QWidget *card)
{
    auto *label = new QLabel(title, card);
    label->setObjectName(u"cardTitle"_s);
    label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed); // the rows take what is left
    layout->addWidget(label);

    auto *accentLine = new QFrame(card);
    accentLine->setObjectName(u"cardAccentLine"_s);
    accentLine->setFixedHeight(kAccentLineHeight);
    layout->addWidget(accentLine);
}

} // namespace

PCConfigPage::PCConfigPage(QWidget *parent)
    : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kPageSpacing);
    setupButtons(layout);
    setupScrollArea(layout);
    connect(refreshButton, &QPushButton::clicked, this, &PCConfigPage::refreshInfo);
    connect(copyButton, &QPushButton::clicked, this, &PCConfigPage::copyReport);
    refreshInfo();
}

void PCConfigPage::setupButtons(QVBoxLayout *page)
{
    refreshButton = new QPushButton(u"Refresh"_s, this);
    copyButton = new QPushButton(u"Copy Report"_s, this);
    auto *row = new QHBoxLayout;
    row->setSpacing(kButtonSpacing);
    row->addWidget(refreshButton);
    row->addWidget(copyButton);
    row->addStretch(1);
    page->addLayout(row, 0);
}

void PCConfigPage::setupScrollArea(QVBoxLayout *page)
{
    auto *area = new QScrollArea(this);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // each value takes the focus, and is scrolled to
    QWidget *content = createCards();
    area->setWidget(content);
    content->setAutoFillBackground(false); // setWidget() switched it on
    area->viewport()->setAutoFillBackground(false);
    page->addWidget(area, 1);
}

QWidget *PCConfigPage::createCards()
{
    auto *content = new QWidget(this);
    auto *grid = new QGridLayout(content);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kGridSpacing);
    grid->setVerticalSpacing(kGridSpacing);

    for (const Card &card : kCards) {
        grid->addWidget(
            createSectionCard(QString::fromLatin1(card.title), this->*card.section, keysOf(card)),
            card.row,
            card.column,
            1,
            card.columns);
    }
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    return content;
}

QWidget *
PCConfigPage::createSectionCard(const QString &title, Section &section, const QList<QString> &keys)
{
    auto *card = new SurfaceFrame(this);
    card->setObjectName(u"glassCard"_s);
    card->setAccessibleName(title);
    auto *layout = new QVBoxLayout(card);
    layout->setContentsMargins(kCardMargins);
    layout->setSpacing(kCardSpacing);
    addTitle(layout, title, card);

    QFormLayout *form = createForm();
    for (const QString &key : keys) {
        auto *value = new ValueLabel(unknown(), card);
        value->setAccessibleName(announcement(key, unknown()));
        value->setAccessibleDescription(title);
        form->addRow(key + QLatin1Char(':'), value);
        section.labels.insert(key, value);
    }
    layout->addLayout(form);
    return card;
}

// It changes what the page shows.
// NOLINTNEXTLINE(readability-make-member-function-const)
void PCConfigPage::setValue(Section &section, const QString &key, const QString &value)
{
    QLabel *label = section.labels.value(key);
    if (label == nullptr) {
        return;
    }
    const QString text = valueOrUnknown(value);
    if (auto *valueLabel = qobject_cast<ValueLabel *>(label)) {
        valueLabel->showValue(text);
    } else {
        label->setText(text);
    }
    label->setAccessibleName(announcement(key, text));
}

QString PCConfigPage::valueOrUnknown(const QString &value) const
{
    const QString text = value.trimmed();
    return text.isEmpty() ? unknown() : text;
}

QString PCConfigPage::formatBytes(unsigned long long bytes)
{
    static const QList<QString> units{u"B"_s, u"KB"_s, u"MB"_s, u"GB"_s, u"TB"_s};
    constexpr double kStep = 1024.0;
    constexpr qsizetype kFirstUnitWithDecimals = 2;

    auto value = static_cast<double>(bytes);
    qsizetype unit = 0;
    while (value >= kStep && unit + 1 < units.size()) {
        value /= kStep;
        ++unit;
    }
    const int decimals = unit < kFirstUnitWithDecimals ? 0 : 1;
    return QString::number(value, 'f', decimals) + QLatin1Char(' ') + units.at(unit);
}
