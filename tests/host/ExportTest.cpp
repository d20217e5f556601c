#include "GuardedTest.h"
#include "host/AppSettings.h"
#include "host/BasicTools.h"
#include "host/ExportCSV.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>

namespace
{

void choose(const ExportCSV &window, const QString &accessibleName, const QString &entry)
{
    const QList<QComboBox *> boxes = window.findChildren<QComboBox *>();
    for (QComboBox *box : boxes) {
        if (box->accessibleName() == accessibleName) {
            box->setCurrentText(entry);
        }
    }
}

void clickButton(const ExportCSV &window, const QString &text)
{
    const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text().remove(QLatin1Char('&')) == text) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
}

/// Two columns of one curve with awkward captions, and one column without any.
QStandardItemModel *makeModel(QObject *parent)
{
    auto *const model = new QStandardItemModel(2, 3, parent);
    model->setHorizontalHeaderItem(0, new QStandardItem(QStringLiteral("=SUM(A1;A2)")));
    model->setHorizontalHeaderItem(1, new QStandardItem(QStringLiteral("a \"b\"\r\nµ")));
    model->setHeaderData(0, Qt::Horizontal, QStringLiteral("M1 [Axis 0]"), ExportCSV::captionRole);
    model->setItem(0, 0, new QStandardItem(QStringLiteral("-1.5")));
    model->setItem(0, 1, new QStandardItem(QStringLiteral("2.25e+09")));
    model->setItem(1, 1, new QStandardItem(QStringLiteral("v1.5")));
    return model;
}

const QString &captionLines()
{
    static const QString lines = QStringLiteral("M1 [Axis 0];;\r\n\"'=SUM(A1;A2)\";\"a \"\"b\"\"\r\nµ\";\r\n");
    return lines;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void saveThroughDialog(ExportCSV &window, const QString &path)
{
    clickButton(window, QStringLiteral("Save..."));
    auto *const dialog = window.findChild<QFileDialog *>();
    QVERIFY(dialog != nullptr);
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto *const nameEdit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QVERIFY(nameEdit != nullptr);
    nameEdit->setText(path);
    QTest::keyClick(nameEdit, Qt::Key_Return);
    QVERIFY(!dialog->isVisible());
}

} // namespace

class ExportTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void settingsGoToTheChosenFile()
    {
        AppSettings().setValue(QStringLiteral("Table/x"), 7);
        QVERIFY(QFile::exists(temporaryPath(QStringLiteral("settings.ini"))));
        AppSettings::setStoreFile(temporaryPath(QStringLiteral("other.ini")));
        QVERIFY(!AppSettings().contains(QStringLiteral("Table/x")));
        AppSettings::setStoreFile(QString());
        QVERIFY(AppSettings::storeFile().endsWith(QStringLiteral("settings.ini")));
        QVERIFY(!AppSettings::storeFile().startsWith(temporaryPath(QString())));
    }

    void picturesHaveHarmlessNames_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("beginning");
        QTest::newRow("plain") << "xyp"
                               << "xyp_";
        QTest::newRow("way out") << "../../up"
                                 << "_.._up_";
        QTest::newRow("hidden") << ". .x"
                                << "x_";
        QTest::newRow("foreign separators") << "a\\b:c\n"
                                            << "a_b_c_";
        QTest::newRow("nothing") << ""
                                 << "picture_";
        QTest::newRow("long and wide") << QString(300, QChar(0x754C)) << QString(64, QChar(0x754C)) + "_";
    }

    void picturesHaveHarmlessNames()
    {
        QFETCH(QString, prefix);
        QFETCH(QString, beginning);
        const QString folder = temporaryPath(QStringLiteral("a/b"));
        AppSettings().setValue(QStringLiteral("Pictures/Folder"), folder);
        QWidget widget;
        widget.resize(30, 20);
        const QFileInfo picture(BasicTools::ExportPNG(&widget, prefix));
        QVERIFY(picture.isFile());
        QCOMPARE(picture.absolutePath(), QFileInfo(folder).absoluteFilePath());
        QVERIFY2(picture.fileName().startsWith(beginning), qPrintable(picture.fileName()));
        QCOMPARE(QImage(picture.filePath()).size(), QSize(30, 20));
    }

    void picturesNeverReplaceEachOther()
    {
        AppSettings().setValue(QStringLiteral("Pictures/Folder"), temporaryPath(QString()));
        QWidget widget;
        widget.resize(2, 2);
        constexpr int pictureCount = 40; // several of them in one millisecond
        QSet<QString> paths;
        for (int count = 0; count < pictureCount; ++count) {
            paths.insert(BasicTools::ExportPNG(&widget, QStringLiteral("p")));
        }
        QCOMPARE(paths.size(), pictureCount);
        QCOMPARE(QDir(temporaryPath(QString())).entryList({QStringLiteral("p_*.png")}).size(), pictureCount);
    }

    void picturesSayWhyThereIsNone()
    {
        QVERIFY(!BasicTools::ExportPNG(nullptr, QStringLiteral("p")).isEmpty());
        const QString blocker = temporaryPath(QStringLiteral("file"));
        QFile file(blocker);
        QVERIFY(file.open(QIODevice::WriteOnly));
        AppSettings().setValue(QStringLiteral("Pictures/Folder"), blocker);
        QWidget widget;
        widget.resize(2, 2);
        QVERIFY(BasicTools::ExportPNG(&widget, QStringLiteral("p")).contains(blocker));
        widget.resize(0, 0);
        QVERIFY(!QFileInfo::exists(BasicTools::ExportPNG(&widget, QStringLiteral("p"))));
    }

    void tableBecomesDelimitedText_data()
    {
        QTest::addColumn<QString>("separator");
        QTest::addColumn<QString>("decimalMark");
        QTest::addColumn<QString>("rows");
        QTest::newRow("as proposed") << "Semicolon"
                                     << "Point"
                                     << "-1.5;2.25e+09;\r\n;v1.5;\r\n";
        QTest::newRow("decimal comma") << "Semicolon"
                                       << "Comma"
                                       << "-1,5;2,25e+09;\r\n;v1.5;\r\n";
        QTest::newRow("clash of commas") << "Comma"
                                         << "Comma"
                                         << "\"-1,5\",\"2,25e+09\",\r\n,v1.5,\r\n";
        QTest::newRow("tab") << "Tab"
                             << "Point"
                             << "-1.5\t2.25e+09\t\r\n\tv1.5\t\r\n";
    }

    void tableBecomesDelimitedText()
    {
        QFETCH(QString, separator);
        QFETCH(QString, decimalMark);
        QFETCH(QString, rows);
        QStandardItemModel *const model = makeModel(this);
        ExportCSV window(model, nullptr, Qt::Tool);
        choose(window, QStringLiteral("Separator"), separator);
        choose(window, QStringLiteral("Decimal mark"), decimalMark);
        QVERIFY2(window.text().endsWith(rows), qPrintable(window.text()));
        if (separator == QStringLiteral("Semicolon")) {
            QCOMPARE(window.text(), captionLines() + rows);
        }

        ExportCSV next(model, nullptr, Qt::Tool); // remembers the choice
        QCOMPARE(next.text(), window.text());
        delete model;
        QVERIFY(next.text().isEmpty());
        clickButton(next, QStringLiteral("Copy"));
    }

    void copiesTheSelectionOrAll()
    {
        ExportCSV window(makeModel(this), nullptr, Qt::Tool);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto *const table = window.findChild<QTableView *>();
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), window.text());

        table->selectionModel()->select(table->model()->index(0, 0), QItemSelectionModel::Select);
        table->selectionModel()->select(table->model()->index(1, 1), QItemSelectionModel::Select);
        clickButton(window, QStringLiteral("Copy"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("-1.5;\r\n;v1.5\r\n"));
        QCOMPARE(table->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("M1 [Axis 0]\n=SUM(A1;A2)"));
    }

    void savesWithByteOrderMarkAndSuffix()
    {
        ExportCSV window(makeModel(this), nullptr, Qt::Tool);
        saveThroughDialog(window, temporaryPath(QStringLiteral("points")));
        QCOMPARE(contentOf(temporaryPath(QStringLiteral("points.csv"))),
                 QByteArray("\xEF\xBB\xBF") + window.text().toUtf8());
        QVERIFY(window.findChild<QMessageBox *>() == nullptr);
    }

    void tellsOfAFailedSave()
    {
        QWidget parent;
        auto *const window = new ExportCSV(makeModel(this), &parent, Qt::Tool);
        const QPointer<ExportCSV> guard = window;
        saveThroughDialog(*window, temporaryPath(QStringLiteral("missing/points.csv")));
        const QList<QMessageBox *> messages = window->findChildren<QMessageBox *>();
        QCOMPARE(messages.size(), 1);
        QMessageBox *const message = messages.first();
        QVERIFY(QTest::qWaitForWindowActive(message));
        QVERIFY(message->text().contains(QStringLiteral("points.csv")));
        QVERIFY(!message->informativeText().isEmpty());
        QTest::keyClick(message, Qt::Key_Return);

        window->activateWindow(); // offscreen there is no window manager to do so
        QTRY_COMPARE(QApplication::activeWindow(), window);
        QTest::keyClick(window, Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(guard.isNull());
    }
};

GUARDED_TEST_MAIN(ExportTest)
#include "ExportTest.moc"
