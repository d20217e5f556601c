#include "logging/SourceWatch.h"

#include "PlotterWindow.h"
#include "modules/ModuleRack.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLocale>
#include <QTableView>
#include <QTime>
#include <QTimer>

#include <algorithm>

namespace
{

constexpr int sides = 2;

/// The module that is chosen on a page with everything that belongs to a choice; empty while something is missing.
QString chosenModule(const QWidget &container, const PlotterWindow::SelectorPage &page)
{
    const auto *const modules = container.findChild<QComboBox *>(page.modules);
    const auto *const motors = container.findChild<QComboBox *>(page.motors);
    const auto *const table = container.findChild<QTableView *>(page.table);
    if (modules == nullptr || motors == nullptr || table == nullptr || !table->currentIndex().isValid()) {
        return {};
    }
    const bool hasMotor = motors->isHidden() || !motors->currentText().trimmed().isEmpty();
    return hasMotor ? modules->currentText().trimmed() : QString();
}

} // namespace

SourceWatch::SourceWatch(QWidget *container, const ModuleRack *rack, QObject *parent)
    : QObject(parent), m_container(container), m_rack(rack), m_pluggedIn(pluggedIn(*rack))
{
    connect(m_rack, &ModuleRack::changed, this, &SourceWatch::compareModules);
    connect(m_rack, &ModuleRack::removed, this, &SourceWatch::compareModules);
    connect(m_rack, &ModuleRack::replaced, this, [this](int index) {
        m_pluggedIn.removeAll(m_rack->settings(index).key); // another module, be it under the same key
        compareModules();
    });
}

QStringList SourceWatch::pluggedIn(const ModuleRack &rack)
{
    QStringList keys;
    for (int index = 0; index < rack.count(); ++index) {
        if (rack.isPluggedIn(index)) {
            keys.append(rack.settings(index).key);
        }
    }
    return keys;
}

void SourceWatch::poll()
{
    if (m_container.isNull() || m_isSettling) {
        return;
    }
    m_sources.resize(sides * PlotterWindow::curveBoxes(m_container).size());
    for (int index = 0; index < m_sources.size(); ++index) {
        const auto side = index % sides == 0 ? PlotterWindow::Side::X : PlotterWindow::Side::Y;
        const QString module = chosenModule(*m_container, PlotterWindow::selectorPage(index / sides, side));
        if (!module.isEmpty()) { // else the boxes were filled anew, and the source is what it was
            m_sources[index] = {module, false};
        }
    }
}

QStringList SourceWatch::modules() const
{
    QStringList keys;
    for (int index = 0; index < m_sources.size(); ++index) {
        const Source &source = m_sources.at(index);
        if (!source.isOff && !source.module.isEmpty() && isSwitchedOn(index / sides)) {
            keys.append(source.module);
        }
    }
    keys.removeDuplicates();
    return keys;
}

QString SourceWatch::problem() const
{
    if (m_isSettling) {
        return {}; // which sources were chosen anew is seen afterwards
    }
    QStringList curves;
    for (int index = 0; index < m_sources.size(); ++index) {
        if (m_sources.at(index).isOff && isSwitchedOn(index / sides)) {
            curves.append(QString::number(index / sides + 1));
        }
    }
    curves.removeDuplicates();
    if (curves.isEmpty()) {
        return {};
    }
    const QString which =
        curves.size() == 1 ? tr("the source of curve %1 is switched off").arg(curves.constFirst())
                           : tr("the sources of the curves %1 are switched off").arg(curves.join(QStringLiteral(", ")));
    return tr("%1: %2; choose module and motor again").arg(m_cause, which);
}

void SourceWatch::compareModules()
{
    const QStringList now = pluggedIn(*m_rack);
    if (now == m_pluggedIn) {
        return;
    }
    poll(); // the boxes still show what was chosen
    const QString time = QLocale().toString(QTime::currentTime(), QStringLiteral("hh:mm:ss"));
    for (const QString &key : qAsConst(m_pluggedIn)) {
        if (!now.contains(key)) {
            m_cause = tr("%1 was taken out at %2").arg(key, time);
        }
    }
    for (const QString &key : now) {
        if (!m_pluggedIn.contains(key)) {
            m_cause = tr("%1 was plugged in at %2").arg(key, time);
        }
    }
    m_pluggedIn = now;
    for (Source &source : m_sources) {
        source.isOff = !source.module.isEmpty();
    }
    if (m_isSettling) {
        return;
    }
    m_isSettling = true;
    QTimer::singleShot(settlingTimeMs, this, [this] {
        m_isSettling = false;
        poll();
        if (!problem().isEmpty()) {
            emit switchedOff();
        }
    });
}

bool SourceWatch::isSwitchedOn(int curve) const
{
    if (m_container.isNull()) {
        return false;
    }
    const QList<QCheckBox *> boxes = PlotterWindow::curveBoxes(m_container);
    return curve < boxes.size() && boxes.at(curve)->isChecked();
}
