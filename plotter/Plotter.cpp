#include "Plotter.h"

#include "CurveDrawing.h"

#include "host/BasicTools.h"
#include "host/DynamicProperty.h"

#include <QCheckBox>
#include <QToolButton>
#include <QVariant>

namespace
{

constexpr QSize controlIconSize(24, 24);
constexpr char colorNameProperty[] = "ColorName";

/**
 * The box of a curve.
 *
 * When a button of a group gets the focus, Qt removes all others from the Tab chain, because arrow keys move between
 * radio buttons. Curve boxes are independent of each other: this class keeps each of them in the Tab chain. It has no
 * Q_OBJECT, so that its class name stays QCheckBox.
 */
class CurveBox final : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

protected:
    void focusInEvent(QFocusEvent *event) override
    {
        QCheckBox::focusInEvent(event);
        const QList<QAbstractButton *> boxes = group()->buttons();
        for (QAbstractButton *const box : boxes) {
            box->setFocusPolicy(Qt::StrongFocus);
        }
    }
};

} // namespace

Plotter::Plotter(int curveCount, QWidget *parent) : QWidget(parent)
{
    setBackgroundRole(QPalette::Mid);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::MinimumExpanding);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Plot"));

    zoomInButton = createZoomButton(QStringLiteral(":/moreIcons/ZoomIn"), tr("Zoom in"));
    connect(zoomInButton, SIGNAL(clicked()), this, SLOT(zoomIn()));
    zoomOutButton = createZoomButton(QStringLiteral(":/moreIcons/ZoomOut"), tr("Zoom out"));
    connect(zoomOutButton, SIGNAL(clicked()), this, SLOT(zoomOut()));

    lineModeCheck = createOptionCheck(QStringLiteral(":/SVG Icons/DotsLine"), tr("Show a line between recorded dots"));
    lineModeCheck->setObjectName(QStringLiteral("lineModeCheck"));
    lineModeCheck->setChecked(true);
    aspectCheck = createOptionCheck(QStringLiteral(":/SVG Icons/Linked"), tr("Show width as height"));
    aspectCheck->setObjectName(QStringLiteral("aspectCheck"));
    showAllDataCheck = createOptionCheck(QStringLiteral(":/Numbers/NrNo"), tr("Show all data"));
    showAllDataCheck->setObjectName(QStringLiteral("showAllDataCheck"));
    BasicTools::setButtonIconsColor(showAllDataCheck, palette().color(QPalette::Window), QColor(), QColor());

    setPlotSettings(PlotSettings()); // before the curve boxes exist

    for (int id = 0; id < curveCount; ++id) {
        createCurveButton(id);
    }
    const QList<QAbstractButton *> buttons = curveButtons.buttons();
    if (!buttons.isEmpty()) {
        // The last icon is light instead of coloured, to mark the end of the row; its "ColorName" is the curve's
        // colour.
        BasicTools::setButtonIconsColor(buttons.last(), palette().color(QPalette::Light), QColor(), QColor());
        buttons.first()->setChecked(true);
    }
    curveButtons.setExclusive(false);
}

Plotter::~Plotter() = default;

QToolButton *Plotter::createZoomButton(const QString &iconPath, const QString &text)
{
    auto *const button = new QToolButton(this);
    button->setIcon(QIcon(iconPath));
    button->setIconSize(controlIconSize);
    button->setToolTip(text);
    button->setAccessibleName(text);
    return button;
}

QCheckBox *Plotter::createOptionCheck(const QString &iconPath, const QString &text)
{
    auto *const check = new QCheckBox(this);
    check->setLayoutDirection(Qt::RightToLeft); // the box behind the icon, toward the right edge
    check->setIcon(QIcon(iconPath));
    check->setIconSize(controlIconSize);
    check->setToolTip(text);
    check->setAccessibleName(text);
    return check;
}

void Plotter::createCurveButton(int id)
{
    auto *const button = new CurveBox(this);
    curveButtons.addButton(button, id);
    const QString number = QString::number(id + 1);
    const QColor color = curveColor(id);
    button->setIcon(QIcon(QStringLiteral(":/Numbers/Nr") + number));
    button->setProperty(colorNameProperty, color.name());
    BasicTools::setButtonIconsColor(button, color, QColor(), QColor());
    button->setIconSize(controlIconSize);
    button->setToolTip(tr("Enable recording"));
    button->setAccessibleName(tr("Enable recording") + QLatin1Char(' ') + number);
    button->setProperty(DynamicProperty::CaptureX, QString(QLatin1Char('X') + number));
    button->setProperty(DynamicProperty::CaptureY, QString(QLatin1Char('Y') + number));
}

void Plotter::setPlotSettings(const PlotSettings &settings)
{
    zoomStack.resize(0); // keeps the memory, unlike clear()
    zoomStack.append(settings);
    curZoom = 0;
    zoomInButton->hide();
    zoomOutButton->hide();
    refreshPixmap();
}

void Plotter::setCurveData(int id, const QVector<QPointF> &points)
{
    curveMap.insert(id, points);
    refreshPixmap();
}

void Plotter::clearCurve(int id)
{
    curveMap.remove(id);
    refreshPixmap();
}

// Each step shows the button for the opposite step only.
void Plotter::zoomIn()
{
    if (curZoom >= zoomStack.size() - 1) {
        return;
    }
    ++curZoom;
    zoomInButton->setEnabled(curZoom < zoomStack.size() - 1);
    zoomOutButton->setEnabled(true);
    zoomOutButton->show();
    refreshPixmap();
}

void Plotter::zoomOut()
{
    if (curZoom <= 0) {
        return;
    }
    --curZoom;
    zoomOutButton->setEnabled(curZoom > 0);
    zoomInButton->setEnabled(true);
    zoomInButton->show();
    refreshPixmap();
}

void Plotter::pushZoomLevel(const PlotSettings &settings)
{
    zoomStack.resize(curZoom + 1);
    zoomStack.append(settings);
    zoomIn();
}

const PlotSettings &Plotter::currentSettings() const
{
    return zoomStack.at(curZoom);
}

PlotGeometry Plotter::geometryOfPlot() const
{
    return {size(), aspectCheck->isChecked()};
}

bool Plotter::isCurveShown(const QAbstractButton *button) const
{
    return showAllDataCheck->isChecked() || (button != nullptr && button->isChecked());
}
