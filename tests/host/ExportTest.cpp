#include "GuardedTest.h"
#include "host/AppSettings.h"
#include "host/BasicTools.h"
#include "host/ExportCSV.h"

#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>

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
    model->setItem(1, 1, new QStandardItem(QStringLiteral("v1.5")));
    return model;
}

void click(const QWidget &window, const QString &text)
{
    const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text() == text) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
}

void chooseNextEntry(QWidget &window, Qt::Key mnemonic)
{
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, mnemonic, Qt::AltModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
}

void saveThroughDialog(ExportCSV &window, const QString &path)
{
    click(window, QStringLiteral("&Save..."));
    auto *const dialog = window.findChild<QFileDialog *>();
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto *const nameEdit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    nameEdit->setText(path);
    QTest::keyClick(nameEdit, Qt::Key_Return);
    QVERIFY(!dialog->isVisible());
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

        const QVector<QPair<QString, QString>> harmlessNames = {{"../../up", "_.._up_"},
                                                                {". .hidden", "hidden_"},
                                                                {"a\\b:c\n", "a_b_c_"},
                                                                {"", "picture_"},
                                                                {QString(300, u'界'), QString(64, u'界') + '_'}};
        for (const QPair<QString, QString> &names : harmlessNames) {
            const QFileInfo picture(BasicTools::ExportPNG(&widget, names.first));
            QVERIFY2(picture.isFile(), qPrintable(names.first));
            QCOMPARE(picture.absolutePath(), QFileInfo(folder).absoluteFilePath());
            QVERIFY2(picture.fileName().startsWith(names.second), qPrintable(picture.fileName()));
        }

        AppSettings().setValue(QStringLiteral("Pictures/Folder"), AppSettings::storeFile()); // a file
        QVERIFY(BasicTools::ExportPNG(&widget, QString()).contains(QStringLiteral("cannot be made")));
    }

    void tableBecomesDelimitedText()
    {
        QStandardItemModel *const model = makeModel(this);
        ExportCSV window(model, nullptr, Qt::Tool);
        const QString captions = QStringLiteral("M1 [Axis 0];;\r\n\"'=SUM(A1;A2)\";\"a \"\"b\"\"\r\nµ\";\r\n");
        QCOMPARE(window.text(), captions + QStringLiteral("-1.5;2.25e+09;\r\n;v1.5;\r\n"));
        chooseNextEntry(window, Qt::Key_D);
        QCOMPARE(window.text(), captions + QStringLiteral("-1,5;2,25e+09;\r\n;v1.5;\r\n"));
        QCOMPARE(AppSettings().value(QStringLiteral("ExportCSV/DecimalMark")).toString(), QStringLiteral(","));
        chooseNextEntry(window, Qt::Key_E);
        QVERIFY(window.text().endsWith(QStringLiteral("\"-1,5\",\"2,25e+09\",\r\n,v1.5,\r\n")));
        chooseNextEntry(window, Qt::Key_E);
        QVERIFY(window.text().endsWith(QStringLiteral("-1,5\t2,25e+09\t\r\n\tv1.5\t\r\n")));

        ExportCSV next(model, nullptr, Qt::Tool); // remembers the choice
        QCOMPARE(next.text(), window.text());
        delete model;
        QVERIFY(next.text().isEmpty());
        click(next, QStringLiteral("&Copy"));
    }

    void copiesTheSelectionOrAll()
    {
        ExportCSV window(makeModel(this), nullptr, Qt::Tool);
        auto *const table = window.findChild<QTableView *>();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), window.text());

        table->selectionModel()->select(table->model()->index(0, 0), QItemSelectionModel::Select);
        table->selectionModel()->select(table->model()->index(1, 1), QItemSelectionModel::Select);
        click(window, QStringLiteral("&Copy"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("-1.5;\r\n;v1.5\r\n"));
        QCOMPARE(table->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("M1 [Axis 0]\n=SUM(A1;A2)"));
    }

    void tellsOfAFailedSave()
    {
        ExportCSV window(makeModel(this), nullptr, Qt::Tool);
        saveThroughDialog(window, temporaryPath(QStringLiteral("points")));
        QFile saved(temporaryPath(QStringLiteral("points.csv")));
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll(), QByteArray("\xEF\xBB\xBF") + window.text().toUtf8());
        QVERIFY(window.findChild<QMessageBox *>() == nullptr);

        saveThroughDialog(window, temporaryPath(QStringLiteral("missing/points.csv")));
        QCOMPARE(window.findChildren<QMessageBox *>().size(), 1);
        const auto *const message = window.findChild<QMessageBox *>();
        QVERIFY(message->isVisible());
        QVERIFY(message->text().contains(QStringLiteral("points.csv")));
        QVERIFY(!message->informativeText().isEmpty());
    }
};

GUARDED_TEST_MAIN(ExportTest)
#include "ExportTest.moc"
