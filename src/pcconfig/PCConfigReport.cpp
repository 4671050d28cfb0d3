// The report of the "PC Config" page.
#include "pcconfig/PCConfigPage.h"

#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

QString block(const QString &name, const PCConfigPage::Section &section)
{
    QString text = QLatin1Char('[') + name + u"]\n"_s;
    for (auto row = section.labels.cbegin(); row != section.labels.cend(); ++row) {
        text += row.key() + u": "_s + row.value()->text() + QLatin1Char('\n');
    }
    return text + QLatin1Char('\n');
}

} // namespace

QString PCConfigPage::buildReportDated(const QDateTime &generated) const
{
    return u"Veltra Premium C++ PC Optimizer - PC Config Report\n"_s + u"Generated: "_s
        + generated.toString(Qt::ISODate) + u"\n\n"_s + block(u"OS"_s, osSection)
        + block(u"CPU"_s, cpuSection) + block(u"GPU"_s, gpuSection) + block(u"RAM"_s, ramSection)
        + block(u"Storage"_s, storageSection) + block(u"Motherboard"_s, motherboardSection)
        + block(u"Display"_s, displaySection);
}

QString PCConfigPage::buildReport() const
{
    return buildReportDated(QDateTime::currentDateTime());
}

// NOLINTNEXTLINE(readability-make-member-function-const): a slot
void PCConfigPage::copyReport()
{
    QGuiApplication::clipboard()->setText(buildReport());
}
