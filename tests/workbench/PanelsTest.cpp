#include "GuardedTest.h"
#include "logging/MessageLog.h"
#include "logging/MessageModel.h"
#include "window/Contrast.h"
#include "window/HintBar.h"
#include "window/MessagePanel.h"
#include "window/Palettes.h"

#include <algorithm>
#include <utility>

namespace
{

QVector<LogMessage> many(int count, QtMsgType type, const QString &text)
{
    return QVector<LogMessage>(count, LogMessage{QTime(), type, "default", text, false});
}

/// The lightness of the darkest and of the lightest pixel that is not transparent, 0 to 255.
std::pair<int, int> lightnessRange(const QImage &image)
{
    std::pair<int, int> range(255, 0);
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const QColor color = image.pixelColor(i % image.width(), i / image.width());
        if (color.alpha() > 127) {
            range = {std::min(range.first, color.lightness()), std::max(range.second, color.lightness())};
        }
    }
    return range;
}

} // namespace

/// Messages from the logger to the panel, the hint for newcomers, and drawings in the dark.
class PanelsTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void messagesAreChosenCopiedAndCleared()
    {
        MessageLog log;
        MessagePanel panel(&log);
        panel.show();
        log.deliver();
        auto *const clear = partCalled<QPushButton>(panel, "Clear");
        clear->click(); // of what the platform has written
        expectMessage(QtWarningMsg, QRegularExpression("careful"));
        expectMessage(QtCriticalMsg, QRegularExpression("broken"));
        qInfo("news\nin two lines");
        qWarning("careful");
        qCritical("broken");
        qDebug("detail");
        log.deliver();
        QCOMPARE(shownTexts(panel), QStringList({"news in two lines", "careful", "broken"}));
        auto *const choice = panel.findChild<QComboBox *>();
        QTest::keyClick(choice, Qt::Key_Down);
        QCOMPARE(shownTexts(panel), QStringList({"careful", "broken"}));
        QTest::keyClick(choice, Qt::Key_End);
        QCOMPARE(shownTexts(panel), QStringList("broken"));
        partCalled<QCheckBox>(panel, "Debug lines")->click();
        QCOMPARE(shownTexts(panel), QStringList({"broken", "detail"}));

        auto *const copy = partCalled<QPushButton>(panel, "Copy");
        auto *const view = panel.findChild<QTreeView *>();
        const auto copied = [copy] {
            copy->click();
            static const QRegularExpression time("[0-9:.]+\t");
            return QGuiApplication::clipboard()->text().replace(time, QString());
        };
        const QString both = "Critical\tdefault\tbroken\nDebug\tdefault\tdetail\n";
        QCOMPARE(copied(), both); // nothing is selected
        view->setCurrentIndex(view->model()->index(1, 0));
        QCOMPARE(copied(), QString("Debug\tdefault\tdetail\n"));
        view->selectionModel()->select(view->model()->index(0, 0),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QCOMPARE(copied(), both); // in the order of the list, not of the selection
        QGuiApplication::clipboard()->clear();
        QApplication::setActiveWindow(&panel);
        view->setFocus();
        QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text().count('\n'), 2);
        clear->click();
        QTest::keyClick(choice, Qt::Key_Home);
        QCOMPARE(shownTexts(panel), QStringList());
    }

    void listFollowsTheEndUntilSomeoneScrollsUp()
    {
        MessageLog log;
        MessagePanel panel(&log);
        panel.resize(400, 200);
        panel.show();
        const QScrollBar *const bar = panel.findChild<QTreeView *>()->verticalScrollBar();
        emit log.arrived(many(50, QtInfoMsg, "news"));
        QVERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
        panel.findChild<QTreeView *>()->scrollToTop();
        emit log.arrived(many(50, QtInfoMsg, "news"));
        QCOMPARE(bar->value(), bar->minimum());
    }

    void floodKeepsTheNewestAndAllWarnings()
    {
        MessageModel model;
        model.append(many(1, QtWarningMsg, "early warning"));
        for (int batch = 0; batch < 10; ++batch) {
            model.append(many(700, QtDebugMsg, QString::number(batch)));
        }
        QCOMPARE(model.rowCount(), 1 + MessageModel::maximumDebugLines);
        QCOMPARE(model.message(0).text, QString("early warning"));
        QCOMPARE(model.message(1).text, QString("8")); // 300 of them, and 700 of the last batch
        QCOMPARE(model.message(model.rowCount() - 1).text, QString("9"));
        model.append(many(3 * MessageModel::maximumMessages, QtInfoMsg, "late"));
        QCOMPARE(model.rowCount(), MessageModel::maximumMessages);
        QCOMPARE(model.message(0).text, QString("late"));
        model.append(many(MessageModel::maximumDebugLines, QtDebugMsg, "debug"));
        QCOMPARE(model.rowCount(), MessageModel::maximumMessages);

        MessageFilter filter;
        filter.setSourceModel(&model);
        QCOMPARE(filter.rowCount(), MessageModel::maximumMessages - MessageModel::maximumDebugLines);
        filter.setMinimum(QtWarningMsg);
        QCOMPARE(filter.rowCount(), 0);
        filter.setShowsDebug(true); // which the severity does not concern
        QCOMPARE(filter.rowCount(), MessageModel::maximumDebugLines);
        model.clear();
        model.append(many(1, QtInfoMsg, "news") + many(1, QtWarningMsg, "careful"));
        const auto symbol = [&model](int row) {
            const QModelIndex cell = model.index(row, MessageModel::Severity);
            return cell.data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
        };
        QVERIFY(!symbol(0).isNull() && !symbol(1).isNull() && symbol(0) != symbol(1));
        model.clear();
        model.append(many(MessageModel::maximumDebugLines, QtDebugMsg, "all of them fit again"));
        QCOMPARE(filter.rowCount(), MessageModel::maximumDebugLines);
    }

    void waitingMessagesAreBounded()
    {
        MessageLog log;
        QVector<LogMessage> fetched;
        connect(&log, &MessageLog::arrived, this, [&](const QVector<LogMessage> &messages) { fetched += messages; });
        bool isOdd = false;
        log.setMarker([&isOdd] { return isOdd; });
        for (int i = 0; i < MessageLog::maximumWaiting + 5; ++i) {
            isOdd = i % 2 == 1;
            qDebug("%d", i);
        }
        log.deliver();
        log.deliver(); // nothing is delivered twice
        QCOMPARE(fetched.size(), MessageLog::maximumWaiting);
        QCOMPARE(fetched.constFirst().text, QString("5"));
        QVERIFY(fetched.constFirst().isMarked && !fetched.at(1).isMarked);
    }

    void hintIsClosedForGood()
    {
        HintBar bar;
        bar.show();
        QVERIFY(!HintBar::wasClosed());
        bar.findChild<QPushButton *>()->click();
        QVERIFY(!bar.isVisible() && HintBar::wasClosed());
    }

    /// Only an icon that would be invisible gets a plate behind it; Fusion's dark outlines are light here.
    void drawingsFitADarkWindow()
    {
        applyPalette(PaletteChoice::Dark);
        const auto platePixels = [](const QColor &color) {
            QPixmap drawing(24, 24);
            drawing.fill(Qt::transparent);
            QPainter(&drawing).fillRect(8, 8, 8, 8, color);
            QCheckBox box;
            box.setIcon(drawing);
            box.setIconSize(drawing.size());
            const QImage image = box.grab().toImage();
            const QColor ground = image.pixelColor(image.width() - 1, 0);
            int count = 0;
            for (int x = box.style()->pixelMetric(QStyle::PM_IndicatorWidth) + 4; x < image.width(); ++x) {
                for (int y = 0; y < image.height(); ++y) {
                    const QColor pixel = image.pixelColor(x, y);
                    count += Contrast::ratio(pixel, ground) > 1.2 && Contrast::ratio(pixel, color) > 1.2 ? 1 : 0;
                }
            }
            return count;
        };
        QVERIFY2(platePixels(Qt::black) > 300, qPrintable(QString::number(platePixels(Qt::black))));
        QVERIFY2(platePixels(Qt::white) < 20, qPrintable(QString::number(platePixels(Qt::white))));
        QCheckBox box; // an empty one
        QVERIFY(lightnessRange(box.grab().toImage()).second > 110);
        const QIcon close = QApplication::style()->standardIcon(QStyle::SP_TitleBarCloseButton);
        QVERIFY(lightnessRange(close.pixmap(16, 16).toImage()).first > 150);
    }

private:
    static QStringList shownTexts(const MessagePanel &panel)
    {
        QStringList texts;
        const QAbstractItemModel *const model = panel.findChild<QTreeView *>()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            texts.append(model->index(row, model->columnCount() - 1).data().toString());
        }
        return texts;
    }
};

GUARDED_TEST(PanelsTest)
#include "PanelsTest.moc"
