#include "GuardedTest.h"
#include "host/AppSettings.h"
#include "host/BasicTools.h"
#include "host/ExportCSV.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>

#include <sys/stat.h>

namespace
{

/// Two columns of one curve with awkward captions, and one column without any.
QStandardItemModel *makeModel(QObject *parent)
{
    auto *const model = new QStandardItemModel(2, 3, parent);
    model->setHorizontalHeaderItem(0, new QStandardItem(QStringLiteral("=SUM(A1;A2)")));
    model->setHorizontalHeaderItem(1, new QStandardItem(QStringLiteral("a \"b\"\r\nµ")));
    model->setHeaderData(0, Qt::Horizontal, QStringLiteral("M1 [Axis 0]"), ExportCSV::captionRole);
    model->setItem(0, 0, new QStandardItem(QStringLiteral("-1.5")));
    model->setItem(0, 1, new QStandardItem(QStringLiteral("2.25e+09")));
    model->setItem(1, 0, new QStandardItem(QStringLiteral("two\nlines")));
    model->setItem(1, 1, new QStandardItem(QStringLiteral("v1.5")));
    model->setItem(1, 2, new QStandardItem(QStringLiteral("-1+A1")));
    return model;
}

void click(const QWidget &window, const QString &text)
{
    const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
    for (QPushButton *const button : buttons) {
        if (button->text() == text) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
}

void saveThroughDialog(ExportCSV &window, const QString &path)
{
    click(window, QStringLiteral("&Save..."));
    auto *const dialog = window.findChild<QFileDialog *>();
    REQUIRE(dialog != nullptr);
    dialog->selectFile(path);
    static_cast<QDialog *>(dialog)->accept();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class ExportTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void picturesNeverReplaceEachOther()
    {
        const QString folder = temporaryPath(QStringLiteral("a/b"));
        AppSettings().setValue(QStringLiteral("Pictures/Folder"), folder);
        QWidget widget;
        widget.resize(30, 20);
        constexpr int pictureCount = 40; // several of them in one millisecond
        for (int count = 0; count < pictureCount; ++count) {
            const QString picture = BasicTools::ExportPNG(&widget, QStringLiteral("p"));
            QCOMPARE(QImage(picture).size(), QSize(30, 20));
        }
        QCOMPARE(QDir(folder).entryList({QStringLiteral("p_*.png")}).size(), pictureCount);

        for (const QString &name : {QStringLiteral("../../up"), QStringLiteral(". .hidden"), QStringLiteral("a\\b:c\n"),
                                    QString(), QString(300, u'界')}) {
            const QFileInfo picture(BasicTools::ExportPNG(&widget, name));
            QVERIFY2(picture.isFile() && !picture.isHidden(), qPrintable(name));
            QCOMPARE(picture.absolutePath(), QFileInfo(folder).absoluteFilePath());
        }
        AppSettings().setValue(QStringLiteral("Pictures/Folder"), AppSettings::storeFile()); // a file
        QVERIFY(BasicTools::ExportPNG(&widget, QString()).contains(QStringLiteral("cannot be made")));
    }

    void tableBecomesDelimitedText()
    {
        QStandardItemModel *const model = makeModel(this);
        ExportCSV window(model, nullptr, Qt::Tool);
        const QString captions = QStringLiteral("M1 [Axis 0];;\r\n\"'=SUM(A1;A2)\";\"a \"\"b\"\"\r\nµ\";\r\n");
        QCOMPARE(window.text(), captions + QStringLiteral("-1.5;2.25e+09;\r\n\"two\nlines\";v1.5;'-1+A1\r\n"));
        auto *const table = window.findChild<QTableView *>();
        QCOMPARE(table->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("M1 [Axis 0]\n=SUM(A1;A2)"));
        for (const QPoint cell : {QPoint(1, 1), QPoint(0, 0)}) { // not in the order of the table
            table->selectionModel()->select(table->model()->index(cell.y(), cell.x()), QItemSelectionModel::Select);
        }
        click(window, QStringLiteral("&Copy"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("-1.5;\r\n;v1.5\r\n"));

        const QList<QComboBox *> boxes = window.findChildren<QComboBox *>();
        for (QComboBox *const box : boxes) {
            box->setCurrentIndex(1); // separator and decimal mark: a comma
        }
        const QPointer<ExportCSV> next = new ExportCSV(model, nullptr, Qt::Tool); // remembers both
        QVERIFY(next->text().contains(QStringLiteral("\r\n\"-1,5\",\"2,25e+09\",\r\n")));
        delete model;
        QVERIFY(next->text().isEmpty());
        click(*next, QStringLiteral("&Copy"));
        QApplication::setActiveWindow(next);
        QTest::keyClick(next.data(), Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(next.isNull());
    }

    void windowShowsAllColumnsAndTakesTheKeys()
    {
        QStandardItemModel *const model = makeModel(this);
        model->setHorizontalHeaderItem(0, new QStandardItem(QString(44, QLatin1Char('w'))));
        QWidget opener;
        opener.show();
        QApplication::setActiveWindow(&opener);
        ExportCSV window(model, &opener, Qt::Tool);
        QTRY_VERIFY(window.isActiveWindow());
        const auto *const table = window.findChild<QTableView *>();
        QCoreApplication::processEvents();
        QVERIFY(table->hasFocus());
        QCOMPARE(table->horizontalScrollBar()->maximum(), 0);
        QVERIFY(window.width() > 640 && window.width() < QGuiApplication::primaryScreen()->availableSize().width());
        QVERIFY(table->rowHeight(0) < 2 * table->fontMetrics().height());
        const QVariant alignment = table->model()->index(0, 0).data(Qt::TextAlignmentRole);
        QVERIFY(alignment.toInt() & Qt::AlignRight);
    }

    void savesAndReportsFailures()
    {
        ExportCSV window(makeModel(this), nullptr, Qt::Tool);
        saveThroughDialog(window, temporaryPath(QStringLiteral("points.csv")));
        QFile saved(temporaryPath(QStringLiteral("points.csv")));
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll(), QByteArray("\xEF\xBB\xBF") + window.text().toUtf8());
        QVERIFY(window.findChild<QMessageBox *>() == nullptr);
        QCOMPARE(AppSettings().value(QStringLiteral("ExportCSV/Folder")).toString(), QFileInfo(saved).absolutePath());

        saveThroughDialog(window, temporaryPath(QStringLiteral("missing/points.csv")));
        const auto *const message = window.findChild<QMessageBox *>();
        QVERIFY(message != nullptr && message->isVisible());
        QVERIFY(message->text().contains(QStringLiteral("points.csv")));
    }

    void savesOverOrdinaryFilesOnly()
    {
        ExportCSV window(makeModel(this), nullptr, Qt::Tool);
        const QString pipe = temporaryPath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        const QString link = temporaryPath(QStringLiteral("link"));
        QVERIFY(QFile::link(pipe, link));
        for (const QString &path : {pipe, link}) {
            QVERIFY(QMetaObject::invokeMethod(&window, "saveTo", Q_ARG(QString, path)));
            auto *const message = window.findChild<QMessageBox *>();
            QVERIFY(message != nullptr && message->informativeText().contains(QStringLiteral("no ordinary file")));
            delete message;
            struct stat status = {};
            QVERIFY(stat(qPrintable(path), &status) == 0 && S_ISFIFO(status.st_mode));
        }
        QFile file(temporaryPath(QStringLiteral("file")));
        QVERIFY(file.open(QIODevice::WriteOnly) && QFile::remove(link) && QFile::link(file.fileName(), link));
        QVERIFY(QMetaObject::invokeMethod(&window, "saveTo", Q_ARG(QString, link)));
        QVERIFY(window.findChild<QMessageBox *>() == nullptr);
        QVERIFY(QFileInfo(link).isSymLink() && QFileInfo(file.fileName()).size() > 0);
    }
};

GUARDED_TEST(ExportTest)
#include "ExportTest.moc"
