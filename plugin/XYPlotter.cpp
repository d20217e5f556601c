#include "XYPlotter.h"

#include "AxisCombo.h"
#include "KeptForProcess.h"
#include "Plotter.h"
#include "RegisterCommand.h"
#include "ui_XYPlotter.h"

#include "host/DynamicProperty.h"

#include <QDebug>
#include <QGraphicsPolygonItem>
#include <QGraphicsScene>
#include <QRadioButton>

#include <utility>

namespace
{

constexpr int pluginType = 6;
constexpr int curveCount = 4;
constexpr int refreshIntervalMs = 250;
constexpr double startRange = 10.0;       // data units, to either side of 0
constexpr double startRateDivisor = 1.15; // of the slider's range: 86 of 100, a sample every 14 ms

const char pluginTitle[] = "XY-Plotter";
const char pluginIcon[] = ":/moreIconsII/XYPlot";

} // namespace

XYPlotter::XYPlotter()
    : ContainerInterface(QStringLiteral("undefined"), QString::fromLatin1(pluginTitle), pluginType, nullptr,
                         QString::fromLatin1(pluginIcon), nullptr)
    , tempTools(1, 1, nullptr, QString(), RegisterCommand::ReadOnChannel, RegisterCommand::Write)
{
}

XYPlotter::XYPlotter(const QString &name, PluginHandler *handler)
    : ContainerInterface(name, QString::fromLatin1(pluginTitle), pluginType, handler, QString::fromLatin1(pluginIcon),
                         nullptr)
    , tempTools(1, 1, nullptr, QString(), RegisterCommand::ReadOnChannel, RegisterCommand::Write)
{
    setProperty(DynamicProperty::ShowOnToolbar, true);
}

XYPlotter::~XYPlotter()
{
    // This destructor may run during an exchange, and the modules may be destroyed before that exchange returns: it
    // must find the sources off. switchOff() would change the request, which the channel may not have sent yet.
    for (const XYaxisCombo *const curve : qAsConst(axisCombos)) {
        curve->x->handler = nullptr;
        curve->y->handler = nullptr;
    }
    if (askingForLogFile) {
        // The click on the box that opened the dialog is still being processed: log() deletes the box afterwards.
        ui->cbLog->setParent(nullptr);
    }
    delete ui;
}

QString XYPlotter::version()
{
    return std::as_const(*this).version();
}

QString XYPlotter::version() const
{
    return QStringLiteral(
        "4.6.0 - container_xy_plot;Plugin-Interface.4.6.0.container_xy_plot;Plugin ;Plugin.Interface.");
}

XYPlotter *XYPlotter::clone(QString name, PluginHandler *handler)
{
    return new XYPlotter(name, handler);
}

void XYPlotter::init(QWidget *parent)
{
    if (parent != this->parent()) {
        qCritical() << "virtual void XYPlotter::init(QWidget*)" << parent << parentWidget();
    }
    if (ui == nullptr) {
        buildWindow();
    }
    connect(this->parent(), SIGNAL(finished(int)), this, SLOT(finished(int)));
    // The first opening fills the lists twice, here and in buildWindow().
    if (!moduleListReady) {
        updateModuleList();
        moduleListReady = true;
    }
    QSlider *const slider = ui->horizontalSliderRate;
    slider->setValue(static_cast<int>((slider->maximum() - slider->minimum()) / startRateDivisor));
    slider->hide();
    ui->labelRate->hide();
    // If init() is called again without finished(), the earlier timer keeps running.
    refreshTimerId = startTimer(refreshIntervalMs, Qt::CoarseTimer);
    recording = false;
}

void XYPlotter::buildWindow()
{
    sampleTimerId = 0;
    ui = new Ui_XYPlotter;
    ui->setupUi(this);
    setProperty(DynamicProperty::WindowFlags, static_cast<unsigned int>(Qt::SubWindow));
    setProperty(DynamicProperty::WindowModal, false);
    setProperty(DynamicProperty::WindowAddSizeGrip, true);
    settings.beginGroup(objectName());
    moduleListReady = false;
    signIcon = QIcon(QStringLiteral(":/SVG Icons/PlusMinus"));
    buildPlot();
    buildTrail();
    const int curves = plotter->curveButtons.buttons().size();
    for (int index = 0; index < curves; ++index) {
        buildCurve(index);
    }
    connect(&plotter->curveButtons, SIGNAL(buttonClicked(int)), this, SLOT(btnClicked(int)));
    connect(plotter->showAllDataCheck, SIGNAL(stateChanged(int)), this, SLOT(btnClicked(int)));
    connect(&curveRadioButtons, SIGNAL(buttonClicked(int)), this, SLOT(btnClicked(int)));
    setAccessibleNames();
    curveRadioButtons.button(0)->setChecked(true);
    updateModuleList();
}

void XYPlotter::buildPlot()
{
    plotter = new Plotter(curveCount, ui->widgetPlot);
    ui->widgetPlot->layout()->addWidget(plotter);
    plotter->setPalette(ui->widgetPlot->palette());
    setStartRange();
    plotter->setPlotSettings(plotSettings);
}

void XYPlotter::setStartRange()
{
    plotSettings.minX = -startRange;
    plotSettings.maxX = startRange;
    plotSettings.minY = -startRange;
    plotSettings.maxY = startRange;
}

void XYPlotter::buildTrail()
{
    auto *const scene = new QGraphicsScene(this);
    ui->graphicsView->setScene(scene);
    trailItem = new QGraphicsPolygonItem;
    trailItem->setFillRule(Qt::WindingFill);
    scene->addItem(trailItem);
    ui->graphicsView->scale(1.0, -1.0); // y grows upward
    ui->graphicsView->hide();
}

void XYPlotter::buildCurve(int index)
{
    for (QStackedWidget *const pages : {ui->dockWidgetContentsX, ui->dockWidgetContentsY}) {
        pages->addWidget(moduleValue(pages->objectName(), index));
    }
    auto *const curve = KeptForProcess::make<XYaxisCombo>();
    curve->x = KeptForProcess::make<AxisCombo>(nullptr, AxisCombo::unboundAddress);
    curve->y = KeptForProcess::make<AxisCombo>(nullptr, AxisCombo::unboundAddress);
    curve->points = KeptForProcess::make<QVector<QPointF>>();
    curve->point = KeptForProcess::make<QPointF>();
    axisCombos.append(curve);

    const QAbstractButton *const curveButton = plotter->curveButtons.buttons().at(index);
    auto *const radioButton = new QRadioButton(curveButton->text());
    radioButton->setIcon(curveButton->icon());
    radioButton->setIconSize(curveButton->iconSize());
    radioButton->setProperty("ColorName", curveButton->property("ColorName").toString());
    radioButton->setAccessibleName(tr("Curve %1").arg(index + 1));
    curveRadioButtons.addButton(radioButton, index);
    ui->horizontalLayoutActPlot->insertWidget(index + 1, radioButton); // between the two spacers
}

void XYPlotter::setAccessibleNames()
{
    ui->horizontalSliderRate->setAccessibleName(tr("Sampling rate"));
    ui->graphicsView->setAccessibleName(tr("Trail of the selected curve"));
}

void XYPlotter::finished(int code)
{
    Q_UNUSED(code)
    disconnect();
    if (parent() != nullptr) {
        parent()->deleteLater();
    }
    setParent(nullptr);
    killTimer(refreshTimerId);
    refreshTimerId = 0;
}
