// The "PC Config" page.
#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QWidget>

class QDateTime;
class QLabel;
class QPushButton;
class QVBoxLayout;

// What the machine is made of, on seven cards, and as a report for the clipboard. GUI thread.
//
// Collecting asks PowerShell fifteen times, one after the other, and blocks meanwhile: up to 2,500 ms a time. Where no
// "powershell" is on PATH, the platform's own inventory answers at once. What nobody can tell is shown as "Unknown".
class PCConfigPage : public QWidget
{
    Q_OBJECT

public:
    // The rows of a card: from the key, without its colon, to the label that shows the value. The card owns the labels.
    struct Section
    {
        QMap<QString, QLabel *> labels;
    };

    // Builds the page and collects everything once.
    explicit PCConfigPage(QWidget *parent = nullptr);

    // A card with a row for each key, in that order, all of them "Unknown"; fills the section. The page owns the card
    // until the caller places it.
    QWidget *createSectionCard(const QString &title, Section &section, const QList<QString> &keys);

    // Shows the trimmed value, or "Unknown" for an empty one. A key that the section does not have is ignored.
    void setValue(Section &section, const QString &key, const QString &value);

    QString valueOrUnknown(const QString &value) const;

    // "4.0 GB": the same texts as formatBytesULongLong().
    static QString formatBytes(unsigned long long bytes);

    // Runs one expression and returns what it printed, trimmed. Empty when there is no PowerShell, or when it does not
    // finish within 2,500 ms or prints more than 16 MiB; it is killed then.
    QString runPowerShell(const QString &command) const;

    // All rows as they are shown right now, by section and in the order of their keys; dated now, by the local clock.
    QString buildReport() const;
    QString buildReportDated(const QDateTime &generated) const;

public slots:
    // Collects everything anew. A call from within a collection does nothing.
    void refreshInfo();

    // Puts the report on the clipboard.
    void copyReport();

public:
    Section osSection;
    Section cpuSection;
    Section gpuSection;
    Section ramSection;
    Section storageSection;
    Section motherboardSection;
    Section displaySection;
    QPushButton *refreshButton = nullptr;
    QPushButton *copyButton = nullptr;

private:
    class Answers;

    void setupButtons(QVBoxLayout *page);
    QWidget *createCards();
    void setupScrollArea(QVBoxLayout *page);

    void collectOs();
    void collectProcessor(const Answers &answers);
    void collectGraphics(const Answers &answers);
    void collectMemory(const Answers &answers);
    void collectStorage();
    void collectMotherboard(const Answers &answers);
    void collectDisplay();

    bool collecting = false;
};
