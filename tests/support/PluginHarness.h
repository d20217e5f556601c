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

class QFileDialog;

/**
 * A plugin instance in a container window, used like a user and a host do: by widgets found by their names, clicks,
 * keys and timer events. Works with a loaded plugin as well as with a linked one. A failed step ends the test program.
 */
class PluginHarness : public QObject
{
    Q_OBJECT

public:
    /// \param root the root object of the plugin loader; not owned
    explicit PluginHarness(ContainerInterface *root, const QString &name = QStringLiteral("Plot"));
    ~PluginHarness() override;

    /// Opens the plugin in a new container window; its timers fire only by the calls below.
    void open();
    void close();

    /// Delivers an event of the sampling timer.
    void sampleTick()
    {
        deliver(m_sampleTimerId);
    }

    void refreshTick()
    {
        deliver(m_refreshTimerId);
    }

    int activeTimers() const;

    template<typename Widget = QWidget> Widget *find(const QString &objectName) const
    {
        return plugin->findChild<Widget *>(objectName);
    }

    ComboBox *moduleBox(int curve, char axis) const
    {
        return find<ComboBox>(partName("cmbm", curve, axis));
    }

    ComboBox *motorBox(int curve, char axis) const
    {
        return find<ComboBox>(partName("motor", curve, axis));
    }

    QTableView *table(int curve, char axis) const
    {
        return find<QTableView>(partName("cmds", curve, axis));
    }

    QAbstractButton *button(const QString &accessibleName) const;

    /// "Enable recording"
    QAbstractButton *curveBox(int curve) const
    {
        return button(QStringLiteral("Enable recording %1").arg(curve + 1));
    }

    /// Selects the curve whose pages are shown.
    QAbstractButton *radioButton(int curve) const
    {
        return button(QStringLiteral("Curve %1").arg(curve + 1));
    }

    QAbstractButton *logBox() const
    {
        return find<QAbstractButton>(QStringLiteral("cbLog"));
    }

    QWidget *plot() const;
    /// Whether the first curve's colour is shown where a data point would be if the plot showed \a range.
    bool isCurveAt(QPointF point, QRectF range) const;

    /// Picks by keyboard the entry whose trimmed text is \a text.
    static bool pick(ComboBox *box, const QString &text);
    /// The row whose display name begins with \a name, or -1.
    static int rowOf(const QTableView *table, const QString &name);
    /// A real click on a cell; the curve's pages have to be shown.
    static bool clickCell(QTableView *table, int row, int column = 2);
    /// Selects curve, module, motor (empty: there is no choice) and value of one axis.
    bool choose(int curve, char axis, const QString &module, const QString &motor, const QString &value);

    /// Clicks the log box and calls \a answer with the dialog that it opens.
    void clickLog(const std::function<void(QFileDialog *)> &answer) const;
    /// Starts a recording into \a path through the box and its dialog.
    void startLog(const QString &path) const;

    /// The table that the export window shows, by a real click on "Export".
    QStandardItemModel *exported();
    /// The exported points of the curve at position \a pair, oldest first.
    QVector<QPointF> points(int pair = 0);

    /// Blocks the plugin's own timer events, so that only sampleTick() and refreshTick() have an effect.
    bool eventFilter(QObject *watched, QEvent *event) override;

    PluginHandler handler;
    QPointer<ContainerInterface> plugin;
    QPointer<QDialog> window;

private:
    static QString partName(const char *part, int curve, char axis);
    void deliver(int timerId);

    bool m_isDelivering = false;
    int m_sampleTimerId = 0;
    int m_refreshTimerId = 0;
};
