// Export of the log through its dialog, which the test answers.
#include "app/MainWindow.h"
#include "app/WindowProbes.h"
#include "fakes/ScriptedPlatform.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <memory>

namespace {

QString text(const char *latin)
{
    return QString::fromLatin1(latin);
}

} // namespace

class LogExportTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void init()
    {
        fakes::scriptedPlatform() = {};
        folder = std::make_unique<QTemporaryDir>();
        window = std::make_unique<MainWindow>(nullptr);
        window->show();
        caption.clear();
        proposed.clear();
    }

    void cleanup() { window.reset(); }

    void dialogIsAsDesigned()
    {
        exportTo(QString());
        QCOMPARE(caption, text("Export Logs"));
        QCOMPARE(proposed, text("VeltraOptimizerLogs.txt"));
        QCOMPARE(filters, QStringList{text("Text Files (*.txt)")});
        QCOMPARE(window->exportLogsButton->text(), text("Export Logs"));
    }

    void cancelledDialogIsSilent()
    {
        const QString before = window->historyLogView->toPlainText();
        exportTo(QString());
        QCOMPARE(window->historyLogView->toPlainText(), before);
        QCOMPARE(window->activityLogView->toPlainText(), before);
    }

    void writesTheHistoryAsItStands()
    {
        window->log(QString::fromUtf8("caf\xc3\xa9 <b>bold</b>"));
        const QString before = window->historyLogView->toPlainText();
        const QString path = folder->filePath(text("log.txt"));
        exportTo(path);
        QCOMPARE(read(path), expectedBytes(before));
        QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                 text("Logs exported: ") + path);
        QCOMPARE(window->activityLogView->toPlainText(), window->historyLogView->toPlainText());
    }

    void secondExportHoldsTheFirst()
    {
        const QString path = folder->filePath(text("log.txt"));
        exportTo(path);
        const QString before = window->historyLogView->toPlainText();
        exportTo(path);
        QCOMPARE(read(path), expectedBytes(before));
        QCOMPARE(read(path).count("Logs exported: "), 1);
    }

    void unwritableTargetIsOneLine()
    {
        const auto before = probes::logLines(window->historyLogView).size();
        for (const QString &path : {folder->filePath(text("missing/log.txt")), folder->path()}) {
            window->exportLogsTo(path);
            QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                     text("Failed to export logs."));
            QCOMPARE(window->activityLogView->toPlainText(), window->historyLogView->toPlainText());
        }
        QCOMPARE(probes::logLines(window->historyLogView).size(), before + 2);
        QVERIFY(!QFile::exists(folder->filePath(text("missing"))));
    }

    void onlyOpeningIsChecked()
    {
        const QString full = text("/dev/full"); // whatever is written to it finds no room
        if (!QFile::exists(full)) {
            QSKIP("no such device here");
        }
        window->exportLogsTo(full);
        QCOMPARE(probes::logLines(window->historyLogView).constLast(),
                 text("Logs exported: ") + full);
    }

private:
    // Presses the button and answers the dialog: with a path, or by cancelling it.
    void exportTo(const QString &path)
    {
        QTimer answering;
        connect(&answering, &QTimer::timeout, this, [&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                return;
            }
            if (!caption.isEmpty()) {
                return;
            }
            caption = dialog->windowTitle();
            filters = dialog->nameFilters();
            auto *name = dialog->findChild<QLineEdit *>(text("fileNameEdit"));
            proposed = name->text();
            if (path.isEmpty()) {
                dialog->reject();
                return;
            }
            name->setText(QDir::toNativeSeparators(path));
            dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->click();
        });
        // A timer of its own: the question comes while the dialog is being answered.
        QTimer overwriting;
        connect(&overwriting, &QTimer::timeout, this, [] {
            if (auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                question->button(QMessageBox::Yes)->click();
            }
        });
        caption.clear();
        answering.start(5);
        overwriting.start(5);
        window->exportLogsButton->click();
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    // Lines end as the platform's text files do.
    static QByteArray expectedBytes(const QString &history)
    {
        QByteArray bytes = history.toUtf8();
        if (QDir::separator() == QLatin1Char('\\')) {
            bytes.replace("\n", "\r\n");
        }
        return bytes;
    }

    std::unique_ptr<MainWindow> window;
    std::unique_ptr<QTemporaryDir> folder;
    QString caption;
    QString proposed;
    QStringList filters;
};

QTEST_MAIN(LogExportTest)
#include "LogExportTest.moc"
