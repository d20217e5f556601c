#pragma once

#include "PlotSettings.h"

#include "host/AppSettings.h"
#include "host/ContainerInterface.h"
#include "host/KAROModuleInterface.h"
#include "host/TempTools.h"

#include <QButtonGroup>
#include <QElapsedTimer>
#include <QIcon>
#include <QList>
#include <QModelIndex>
#include <QPointF>
#include <QPolygonF>
#include <QString>
#include <QVector>

class AxisCombo;
class ComboBox;
class Plotter;
class QAbstractItemModel;
class QFile;
class QGraphicsPolygonItem;
class QStandardItemModel;
class QTableView;
class SelectorPage;
class Ui_XYPlotter;

/**
 * The container plugin: up to four curves, each of one live value over another.
 *
 * The host creates one root object, which is only cloned, and owns the clones. At every opening it makes a container
 * window the parent of a clone and calls init(): the first call builds the window, later ones only reconnect. When the
 * window closes, the plugin removes itself from it and keeps its curves, sources and settings until the next opening.
 *
 * Two timers on the GUI thread drive it: the sampling timer reads the modules and collects points, the refresh timer
 * passes the points to the plot. Everything else happens in slots, which use sender() to find out what was clicked.
 */
class XYPlotter : public ContainerInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ContainerInterface_iid FILE "XYPlotter.json")
    Q_INTERFACES(ContainerInterface)

public:
    /// One curve. Neither the record nor what it points to is ever deleted, so that a channel that still holds a
    /// request never writes to freed memory.
    struct XYaxisCombo
    {
        AxisCombo *x = nullptr;
        AxisCombo *y = nullptr;
        QVector<QPointF> *points = nullptr; ///< oldest first, raw units of the sources
        QPointF *point = nullptr;           ///< the latest sample, also when it repeats the last point
        QString xName;
        QString yName;
        QAbstractItemModel *xModel = nullptr; ///< the table from which X was chosen; not owned
        QAbstractItemModel *yModel = nullptr;
    };

    /// The root object, for the plugin loader: it is cloned and never shown.
    XYPlotter();
    /**
     * A working instance.
     * \param name    becomes the object name and the settings group
     * \param handler the registry of module plugins, not owned
     */
    XYPlotter(const QString &name, PluginHandler *handler);
    ~XYPlotter() override;

    // One of the two overrides the base's version(), which is const in some hosts. "override" would fail on the other
    // one.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_CLANG("-Winconsistent-missing-override")
    QString version();       // NOLINT(modernize-use-override)
    QString version() const; // NOLINT(modernize-use-override)
    QT_WARNING_POP
    XYPlotter *clone(QString name, PluginHandler *handler) override;
    void init(QWidget *parent) override;

private Q_SLOTS:
    // The order of the slots is part of the plugin's interface.
    void updateModuleList();
    void btnClicked(int idx = 0);
    void setModule(int idx = -1);
    void setMotorTable(int motor = 0);
    void log(bool checked);
    void timerEvent(QTimerEvent *ev) override;
    void setRate(int value);
    void itemClicked(QModelIndex index);
    void finished(int code) override;
    void handleModulePlugin(KAROModuleInterface *plugin, QString msg) override;

private:
    void buildWindow();
    void buildPlot();
    void setStartRange();
    void buildTrail();
    void buildCurve(int index);
    void setAccessibleNames();
    QWidget *moduleValue(const QString &name, int index);
    QTableView *createTable(const QString &name, QWidget *parent);

    void updateModuleList(ComboBox *combo);
    QString composeModuleLabel(const QString &key, KAROModuleInterface *module);
    void fillMotorBox(ComboBox *motorBox, const KAROModuleInterface &module, int axes, bool hasRegisters);
    void showTable(const SelectorPage &page, QStandardItemModel *model, const QString &title);
    void replaceTable(const SelectorPage &page, QStandardItemModel *model);
    void releaseTable(QAbstractItemModel *model);
    void stopRecordingForNewSource(const XYaxisCombo &curve, int curveIndex, bool isX, const QString &name);

    void sampleAll();
    void showElapsedTime();
    QString takePoint(XYaxisCombo *curve, bool *hasNewData);
    void startCurve(XYaxisCombo *curve);
    void extendTrail(const QPointF &point);
    void appendToLog(const QString &fields);

    void refreshAll();
    bool widenRange(const QPointF &point);
    void applyPlotSettings();

    void selectCurve(int index);
    void exportPoints();
    void clearPoints();
    void stopRecording();
    bool isSwitchedOn(int index) const;

    Ui_XYPlotter *ui = nullptr;
    AppSettings settings;
    int sampleTimerId = 0;
    int refreshTimerId = 0;
    QElapsedTimer elapsed;
    QList<XYaxisCombo *> axisCombos;
    QButtonGroup curveRadioButtons;
    bool moduleListReady = false;
    TempTools tempTools;
    QGraphicsPolygonItem *trailItem = nullptr; // owned by the scene
    QPolygonF trail;
    Plotter *plotter = nullptr;
    PlotSettings plotSettings;
    bool recording = false;
    int lineCounter = 0;
    QFile *logFile = nullptr; // see KeptForProcess
    bool askingForLogFile = false;
    QIcon signIcon;        // shared by all register tables; null before the first opening
    QString pendingHeader; // of the recording; empty once it has been written
};
