// A folder for PATH, with stand-ins for the programs that ask the web, and what they are to answer.
#pragma once

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

// While it lives, PATH is its folder alone.
class WebAnswers
{
public:
    WebAnswers()
        : oldPath(qgetenv("PATH"))
    {
        qputenv("PATH", QDir::toNativeSeparators(folder.path()).toLocal8Bit());
    }
    ~WebAnswers() { qputenv("PATH", oldPath); }
    Q_DISABLE_COPY_MOVE(WebAnswers)

    QString file(const QString &name) const { return folder.filePath(name); }
    bool has(const QString &name) const { return QFile::exists(file(name)); }

    // Puts the stand-in there under that name.
    void plant(const QString &program) const
    {
        const QFileInfo helper(QStringLiteral(VELTRA_ANSWER_HELPER));
        const QString suffix =
            helper.suffix() == QLatin1String("exe") ? QStringLiteral(".exe") : QString();
        QVERIFY(QFile::copy(helperFile(), file(program + suffix)));
    }

    // Where it is whatever the current folder is now.
    static QString helperFile()
    {
        static const QString path =
            QFileInfo(QStringLiteral(VELTRA_ANSWER_HELPER)).absoluteFilePath();
        return path;
    }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile stream(file(name));
        QVERIFY(stream.open(QIODevice::WriteOnly));
        QCOMPARE(stream.write(content), content.size());
    }

    QByteArray read(const QString &name) const
    {
        QFile stream(file(name));
        return stream.open(QIODevice::ReadOnly) ? stream.readAll() : QByteArray();
    }

    void plan(const QString &question, const QByteArray &steps) const
    {
        write(question + QStringLiteral(".plan"), steps);
    }

    // Answers with these bytes.
    void answer(const QString &question, const QByteArray &output) const
    {
        write(question + QStringLiteral(".out"), output);
        plan(question, "print " + question.toLatin1() + ".out\n");
    }

    qint64 runs(const QString &question) const
    {
        return QFileInfo(file(question + QStringLiteral(".runs"))).size();
    }

    // The pulse of one that never ends has not been felt for a while.
    bool isDead(const QString &question) const
    {
        const QFileInfo pulse(file(question + QStringLiteral(".pulse")));
        return pulse.exists() && pulse.lastModified().msecsTo(QDateTime::currentDateTime()) > 500;
    }

private:
    QTemporaryDir folder;
    QByteArray oldPath;
};
