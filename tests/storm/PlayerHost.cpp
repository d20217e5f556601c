// What comes from the host: time, modules, openings and closings; and the commands of the window.

#include "Harness.h"
#include "Player.h"
#include "Report.h"

#include "modules/ModuleRack.h"

#include "host/ComboBox.h"
#include "host/ContainerInterface.h"
#include "host/ExportCSV.h"
#include "host/PluginHandler.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QThread>

namespace
{

QImage drawnFromScratch(QWidget *plot)
{
    const QSize size = plot->size();
    plot->resize(size + QSize(1, 1));
    plot->grab();
    plot->resize(size);
    return plot->grab().toImage();
}

} // namespace

void Player::tick(const Op &op)
{
    const QPointer<ContainerInterface> container = chosen(op);
    for (int count = numberIn(op.a, 1, op.a % 60U == 0U ? 300 : 16); count > 0 && container != nullptr; --count) {
        StormChannel::advance(tickMs);
        deliver(container, true);
        if (m_devices != nullptr) {
            QThread::msleep(1); // their answers take real time
        }
    }
}

void Player::refresh(const Op &op)
{
    deliver(chosen(op), false);
}

void Player::notices(const Op &op)
{
    // What the timer of the notices would do.
    QMetaObject::invokeMethod(chosen(op), "updateModuleList");
}

void Player::moduleComes(const Op &op)
{
    ModuleRack *const rack = m_host->rack;
    if (rack != nullptr && op.a % 4U == 0U) {
        const int place = numberIn(op.b, 0, rack->count() - 1);
        rack->setPluggedIn(place, !rack->isPluggedIn(place));
        return;
    }
    plugIn(newModule(op));
}

KAROModuleInterface *Player::newModule(const Op &op) const
{
    PluginHandler *const registry = m_host->container(0)->pluginHandler();
    if (m_devices != nullptr && registry->getModulePlugin(FaultyDevices::key(op.b)) == nullptr) {
        return m_devices->makeModule(op.b, registry);
    }
    constexpr quint32 maximumModules = 5;
    return new StormModule(QStringLiteral("S%1/m %1").arg(op.b % maximumModules), op.a / 4U);
}

void Player::plugIn(KAROModuleInterface *module)
{
    if (m_host->container(0)->pluginHandler()->addModulePlugin(module)) {
        m_modules.append(module);
    } else {
        delete module; // its key is in use
    }
}

void Player::moduleGoes(const Op &op)
{
    KAROModuleInterface *const module = someModule(op.a);
    if (module == nullptr) {
        return;
    }
    if (op.b % 4U == 0U) {
        delete module; // without a notice before
    } else {
        m_host->container(0)->pluginHandler()->removeModulePlugin(module->key());
    }
    m_modules.removeAll(nullptr);
}

void Player::moduleReplaced(const Op &op)
{
    KAROModuleInterface *const module = someModule(op.a);
    if (module == nullptr) {
        return;
    }
    const QString key = module->key();
    m_host->container(0)->pluginHandler()->removeModulePlugin(key);
    m_modules.removeAll(nullptr);
    plugIn(new StormModule(key, op.b));
}

void Player::moduleManner(const Op &op)
{
    if (StormChannel *const channel = someChannel(op.a)) {
        using Manner = StormChannel::Manner;
        constexpr Manner manners[] = {Manner::Silent, Manner::Babbling, Manner::Answers};
        channel->manner = manners[op.b % 3U];
    }
}

void Player::schedule(const Op &op)
{
    if (StormChannel *const channel = someChannel(op.a)) {
        channel->onExchange = [this, op] {
            ++m_depth;
            act(op.container(), op.b);
            --m_depth;
        };
    }
}

/// What may happen at any moment, also in the middle of an exchange or under a dialog.
void Player::act(int container, quint32 what)
{
    using Moment = std::function<void(Player *, const Op &)>;
    static const Moment moments[] = {
        &Player::moduleGoes,
        &Player::moduleGoes,
        &Player::moduleComes,
        [](Player *it, const Op &op) { it->m_host->close(op.container()); },
        &Player::renew,
        [](Player *it, const Op &op) {
            while (it->someModule(0) != nullptr) {
                it->moduleGoes(op);
            }
        },
        &Player::moduleReplaced,
        &Player::tick,
        &Player::box,
        &Player::table,
        &Player::button,
        &Player::notices,
    };
    moments[what % 12U](this, {0, what / 12U, what / 96U, static_cast<quint32>(container)});
}

void Player::openOrClose(const Op &op)
{
    const auto index = op.container();
    if (op.a % 6U == 0U) {
        m_host->close(index);
    } else {
        m_host->open(index);
    }
}

void Player::renew(const Op &op)
{
    if (m_host->isRenewedWhole && (m_depth > 0 || op.a % 8U != 0U)) {
        return;
    }
    m_host->renew(op.container());
    m_renewals += m_host->isRenewedWhole ? StormHost::containerCount : 1;
    for (quint32 index = 0; index < StormHost::containerCount; ++index) {
        chosen({0, 0, 0, index});
    }
}

void Player::click(ContainerInterface *container, const QString &name)
{
    auto *const button = container->findChild<QAbstractButton *>(name);
    if (button != nullptr && container->parent() != nullptr) { // nobody can click in a container that is closed
        button->click();
    }
}

void Player::log(const Op &op)
{
    if (op.a % 3U != 0U) { // else whatever the box and the sources are
        sources(op);
        tick(op);
    }
    click(chosen(op), "cbLog");
    tick(op);
}

void Player::exportWindow(const Op &op)
{
    click(chosen(op), "btnExport");
    QWidget *const window = m_host->window(op.container());
    auto *const shown = window == nullptr ? nullptr : window->findChild<ExportCSV *>();
    if (shown == nullptr) {
        return;
    }
    auto *const pushed = pick(shown->findChildren<QPushButton *>(), op.b);
    if (op.a % 3U == 0U && pushed != nullptr) {
        pushed->click();
    } else if (op.a % 3U == 1U) {
        shown->close();
    }
}

void Player::button(const Op &op)
{
    const char *const names[] = {"btnCamera", "btnResetData", "btnRefresh"};
    click(chosen(op), names[op.a % 8U == 0U ? 0U : 1U + op.a % 2U]);
}

void Player::strangeCall(const Op &op)
{
    ContainerInterface *const container = chosen(op);
    const char *const slotNames[] = {"btnClicked", "setModule", "setMotorTable"};
    if (op.a % 5U < 3U) {
        QMetaObject::invokeMethod(container, slotNames[op.a % 5U], Q_ARG(int, numberIn(op.b, -5, 5)));
    } else if (op.a % 5U == 3U) {
        QMetaObject::invokeMethod(container, "itemClicked", Q_ARG(QModelIndex, QModelIndex()));
    } else {
        QTimerEvent stray(numberIn(op.b, -5, 100000) + 1000000);
        m_isDelivering = true;
        QCoreApplication::sendEvent(container, &stray);
        m_isDelivering = false;
    }
}

/// After one event the plot has to look as one that is drawn from scratch.
void Player::picture(const Op &op)
{
    const QPointer<QWidget> plot = plotOf(chosen(op));
    constexpr int maximumPixels = 2000 * 1200; // larger ones take long
    if (plot == nullptr || plot->size().isEmpty() || plot->width() * plot->height() > maximumPixels) {
        return;
    }
    // Begins with a new picture: the plot is not drawn anew when a curve is switched on or off, or gets other names.
    drawnFromScratch(plot);
    Op step = op;
    step.b *= 6U; // at the plot itself
    switch (op.a % 7U) {
    case 0:
        tick(op);
        refresh(op);
        break;
    case 1:
        drag(op);
        break;
    case 2:
        wheel(step);
        break;
    case 3:
        // The plot places its boxes when its size changes, and not for another style: not compared.
        step.a += op.a % 8U == 6U ? 1U : 0U;
        look(step);
        break;
    case 4:
        plot->resize(numberIn(op.b, 1, 900), numberIn(op.b >> 16U, 1, 700));
        break;
    case 5:
        step.c = op.c % 2U + (op.c % 2U == 0U ? 0U : 2U); // divisible by 3
        key(step);
        break;
    default:
        button(op);
    }
    if (plot == nullptr || plot->size().isEmpty()) {
        return;
    }
    const QImage shown = plot->grab().toImage();
    ++m_counts.pictures;
    if (shown != drawnFromScratch(plot)) {
        fail(filled("the picture is not one drawn from scratch, %1 x %2, after step %3", plot->width(), plot->height(),
                    op.a % 7U));
    }
}
