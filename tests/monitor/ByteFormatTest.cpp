#include "monitor/ByteFormat.h"

#include <QTest>
#include <limits>

class ByteFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void formats_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<QString>("text");
        const auto row = [](quint64 bytes, const char *text) {
            QTest::newRow(text) << bytes << QString::fromLatin1(text);
        };
        row(0, "0 B");
        row(1, "1 B");
        row(512, "512 B");
        row(1023, "1023 B");
        row(1024, "1 KB");
        row(1535, "1 KB");
        row(1536, "2 KB");
        row(1048575, "1024 KB");
        row(1048576, "1.0 MB");
        row(1572864, "1.5 MB");
        row((1ULL << 30) - 1, "1024.0 MB");
        row(1ULL << 30, "1.0 GB");
        row(17072495001ULL, "15.9 GB");
        row(1ULL << 40, "1.0 TB");
        row(1ULL << 50, "1024.0 TB");
        row(1ULL << 63, "8388608.0 TB");
        row(std::numeric_limits<quint64>::max(), "16777216.0 TB");
    }

    void formats()
    {
        QFETCH(quint64, bytes);
        QFETCH(QString, text);
        QCOMPARE(formatBytesULongLong(bytes), text);
    }
};

QTEST_APPLESS_MAIN(ByteFormatTest)
#include "ByteFormatTest.moc"
