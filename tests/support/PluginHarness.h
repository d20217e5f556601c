#pragma once

#include "host/ComboBox.h"
#include "host/ContainerInterface.h"
#include "host/PluginHandler.h"

#include <QAbstractButton>
#include <QDialog>
#include <QPointer>
#include <QStandardItemModel>
#include <QTableView>

#include <functional>

class ExportCSV;
class QCheckBox;
class QFileDialog;

/// Holds back the timer events of an object unless it is open: time passes when the test says so.
class TimerGate : public QObject
{
    Q_OBJECT

public:
    bool eventFilter(QObject *watched, QEvent *event) override;

    bool isOpen = false;
};

/**
 * A plugin instance in a container window, driven as a person and a host would: through widgets found by their names,
 * real clicks and keys, and timer events. Works on a plugin that was loaded as well as on one that is linked in.
 */
class PluginHarness
{
public:
    /// \param root the object that the plugin loader hands out; not owned
    explicit PluginHarness(ContainerInterface *root, const QString &name = QStringLiteral("Plot"));
    ~PluginHarness();

    /// Opens the plugin in a new container window; its timers fire only by the calls below.
    void open(const QSize &size = QSize(900, 600));
    void close();

    void sampleTick(); ///< Delivers an event of the sampling timer.
    void refreshTick();
    int activeTimers() const;

    template<typename Widget = QWidget> Widget *find(const QString &objectName) const
    {
        return plugin->findChild<Widget *>(objectName);
    }

    ComboBox *moduleBox(int curve, char axis) const;
    ComboBox *motorBox(int curve, char axis) const;
    QTableView *table(int curve, char axis) const;
    QAbstractButton *curveBox(int curve) const;    ///< "Enable recording"
    QAbstractButton *radioButton(int curve) const; ///< selects the curve whose pages are shown
    QAbstractButton *showAllBox() const;
    QWidget *plot() const;

    /// Picks by keyboard the entry whose trimmed text is \a text.
    static bool pick(ComboBox *box, const QString &text);
    /// The row whose display name begins with \a name, or -1.
    static int rowOf(const QTableView *table, const QString &name);
    /// A real click on a cell; the curve's pages have to be shown.
    static bool clickCell(QTableView *table, int row, int column = 2);
    /// Selects the curve, module, motor (empty: none offered) and value of one axis as a person would.
    bool choose(int curve, char axis, const QString &module, const QString &motor, const QString &value);

    QCheckBox *logBox() const;
    /// Clicks the log box and does \a answer with the dialog that it opens; fails without a dialog.
    void clickLog(const std::function<void(QFileDialog *)> &answer) const;
    /// Starts a recording into \a path through the box and its dialog.
    void startLog(const QString &path) const;

    /// The table that the export window shows, by a real click on "Export".
    QStandardItemModel *exported();
    /// The exported points of the curve at position \a pair, oldest first.
    QVector<QPointF> points(int pair = 0);

    PluginHandler handler;
    QPointer<ContainerInterface> plugin;
    QPointer<QDialog> window;

private:
    void deliver(int timerId);

    TimerGate m_gate;
    int m_sampleTimerId = 0;
    int m_refreshTimerId = 0;
};
