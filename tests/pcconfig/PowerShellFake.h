// A PowerShell of one's own, alone on PATH, that answers what the test wants and keeps what it was asked.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

class PowerShellFake
{
public:
    // PATH names only an empty folder until install() is called.
    PowerShellFake()
        : oldPath(qgetenv("PATH"))
    {
        qputenv("PATH", QDir::toNativeSeparators(folder.path()).toLocal8Bit());
    }
    ~PowerShellFake() { qputenv("PATH", oldPath); }
    Q_DISABLE_COPY_MOVE(PowerShellFake)

    static QString fileName()
    {
        const bool isWindows =
            QString::fromLatin1(VELTRA_POWERSHELL_HELPER).endsWith(QLatin1String(".exe"));
        return isWindows ? QStringLiteral("powershell.exe") : QStringLiteral("powershell");
    }

    void install() const { QVERIFY(QFile::copy(helperFile(), folder.filePath(fileName()))); }

    // In the run of that number, the first one being 1.
    void answer(int run, const QByteArray &bytes) const { write("answer", run, bytes); }
    void printError(int run, const QByteArray &bytes) const { write("error", run, bytes); }
    void repeat(int run, int times) const { write("repeat", run, QByteArray::number(times)); }
    void sleep(int run, int milliseconds) const
    {
        write("sleep", run, QByteArray::number(milliseconds));
    }
    void exitWith(int run, int code) const { write("exit", run, QByteArray::number(code)); }

    // "1 begins\t-NoProfile\t...", "1 ends", ...
    QStringList calls() const
    {
        QFile file(folder.filePath(QStringLiteral("calls")));
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QString path(const QString &name) const { return folder.filePath(name); }

private:
    void write(const char *what, int run, const QByteArray &bytes) const
    {
        write(QStringLiteral("%1-%2").arg(QLatin1String(what)).arg(run), bytes);
    }

    // Where it is whatever the current folder will be.
    static QString helperFile()
    {
        static const QString file =
            QFileInfo(QString::fromLatin1(VELTRA_POWERSHELL_HELPER)).absoluteFilePath();
        return file;
    }

    QTemporaryDir folder;
    QByteArray oldPath;
};
