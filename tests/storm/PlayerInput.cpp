// The kinds of events, and those that come from a person: mouse, keys, boxes, tables, sizes and looks.

#include "Player.h"
#include "Report.h"

#include "host/ComboBox.h"
#include "host/ContainerInterface.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QRadioButton>
#include <QStyleFactory>
#include <QTableView>
#include <QWheelEvent>

#include <random>

namespace
{

QString partName(const char *part, const Op &op)
{
    return filled("%1%2dockWidgetContents%3", part, op.b / 2U % 4U, op.b % 2U == 0U ? "X" : "Y");
}

void sendMouse(QWidget *target, QEvent::Type type, QPoint position, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, position, target->mapToGlobal(position), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

} // namespace

struct OpTable
{
    struct Kind
    {
        const char *name;
        int weight;
        void (Player::*perform)(const Op &op);
    };
    static const Kind kinds[28];
};

const OpTable::Kind OpTable::kinds[28] = {
    {"mouse", 12, &Player::mouse},
    {"drag over the plot", 5, &Player::drag},
    {"wheel", 4, &Player::wheel},
    {"key", 8, &Player::key},
    {"box", 8, &Player::box},
    {"row", 8, &Player::table},
    {"sources", 12, &Player::sources},
    {"check box", 4, &Player::checkBox},
    {"curve", 3, &Player::radio},
    {"size", 3, &Player::resize},
    {"show or hide", 2, &Player::visibility},
    {"look", 2, &Player::look},
    {"state", 2, &Player::state},
    {"ticks", 24, &Player::tick},
    {"refresh", 6, &Player::refresh},
    {"lists", 5, &Player::notices},
    {"module comes", 3, &Player::moduleComes},
    {"module goes", 1, &Player::moduleGoes},
    {"module replaced", 1, &Player::moduleReplaced},
    {"manner", 2, &Player::moduleManner},
    {"in an exchange", 2, &Player::schedule},
    {"open or close", 3, &Player::openOrClose},
    {"renew", 1, &Player::renew},
    {"log", 6, &Player::log},
    {"export", 2, &Player::exportWindow},
    {"button", 2, &Player::button},
    {"strange call", 2, &Player::strangeCall},
    {"picture", 3, &Player::picture},
};

QVector<Op> Player::makeOps(quint32 seed, int count)
{
    std::mt19937 engine(seed);
    QVector<Op> ops;
    ops.reserve(count);
    quint32 total = 0;
    for (const OpTable::Kind &kind : OpTable::kinds) {
        total += static_cast<quint32>(kind.weight);
    }
    for (int index = 0; index < count; ++index) {
        Op op;
        auto left = static_cast<int>(engine() % total);
        while (left >= OpTable::kinds[op.kind].weight) {
            left -= OpTable::kinds[op.kind++].weight;
        }
        op.a = static_cast<quint32>(engine());
        op.b = static_cast<quint32>(engine());
        op.c = static_cast<quint32>(engine());
        ops.append(op);
    }
    return ops;
}

QString Player::describe(const Op &op)
{
    return filled("%1 %2 %3 %4 (%5)", op.kind, op.a, op.b, op.c, OpTable::kinds[op.kind].name);
}

void Player::perform(const Op &op)
{
    (this->*OpTable::kinds[op.kind].perform)(op);
}

void Player::mouse(const Op &op)
{
    const QPointer<QWidget> target = widget(op);
    const QPoint position(numberIn(op.a / 7U, -5, target->width() + 5), numberIn(op.b / 7U, -5, target->height() + 5));
    const Qt::MouseButton button = op.b % 5U == 0U ? Qt::RightButton : Qt::LeftButton;
    switch (op.b / 5U % 4U) {
    case 0:
        sendMouse(target, QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
        break;
    case 1:
        sendMouse(target, QEvent::MouseButtonDblClick, position, button, button);
        break;
    default:
        sendMouse(target, QEvent::MouseButtonPress, position, button, button);
        if (target != nullptr && op.b / 20U % 8U != 0U) {
            sendMouse(target, QEvent::MouseButtonRelease, position, button, Qt::NoButton);
        }
    }
}

void Player::drag(const Op &op)
{
    const QPointer<QWidget> plot = plotOf(chosen(op));
    if (plot == nullptr) {
        return;
    }
    const QPoint from(numberIn(op.a, -10, plot->width() + 10), numberIn(op.a >> 16U, -10, plot->height() + 10));
    const QPoint to(numberIn(op.b, -10, plot->width() + 10), numberIn(op.b >> 16U, -10, plot->height() + 10));
    sendMouse(plot, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    sendMouse(plot, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    if (op.c / 2U % 10U != 0U) {
        sendMouse(plot, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    }
}

void Player::wheel(const Op &op)
{
    QWidget *const target = op.b % 2U == 0U ? plotOf(chosen(op)) : widget(op);
    if (target == nullptr) {
        return;
    }
    const QPoint angle(0, op.a % 16U == 0U ? numberIn(op.b, -50000, 50000) : numberIn(op.b, -3, 3) * 120);
    const QPointF position = target->rect().center();
    QWheelEvent event(position, target->mapToGlobal(position.toPoint()), QPoint(), angle, Qt::NoButton,
                      op.b % 3U == 0U ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase, false,
                      Qt::MouseEventNotSynthesized);
    QCoreApplication::sendEvent(target, &event);
}

void Player::key(const Op &op)
{
    constexpr int keys[] = {Qt::Key_Return,  Qt::Key_Enter,  Qt::Key_Space, Qt::Key_Escape, Qt::Key_Tab,
                            Qt::Key_Backtab, Qt::Key_Up,     Qt::Key_Down,  Qt::Key_Left,   Qt::Key_Right,
                            Qt::Key_Plus,    Qt::Key_Minus,  Qt::Key_Home,  Qt::Key_End,    Qt::Key_A,
                            Qt::Key_PageUp,  Qt::Key_Delete, Qt::Key_F2};
    QWidget *const plot = plotOf(chosen(op));
    const QPointer<QWidget> target = op.c % 3U == 0U && plot != nullptr ? plot : widget(op);
    const int key = keys[op.b % 18U];
    const Qt::KeyboardModifiers modifiers = op.b / 18U % 6U == 0U ? Qt::ControlModifier : Qt::NoModifier;
    QKeyEvent press(QEvent::KeyPress, key, modifiers, key == Qt::Key_A ? "a" : QString());
    QCoreApplication::sendEvent(target, &press);
    if (target != nullptr) {
        QKeyEvent release(QEvent::KeyRelease, key, modifiers);
        QCoreApplication::sendEvent(target, &release);
    }
}

void Player::box(const Op &op)
{
    auto *const box = chosen(op)->findChild<ComboBox *>(partName(op.a % 3U == 0U ? "motor" : "cmbm", op));
    if (box != nullptr) {
        box->setCurrentIndex(numberIn(op.a / 3U, -1, box->count()));
    }
}

void Player::table(const Op &op)
{
    auto *const table = chosen(op)->findChild<QTableView *>(partName("cmds", op));
    if (table == nullptr || table->model() == nullptr) {
        return;
    }
    const int rows = table->model()->rowCount();
    const QModelIndex index = table->model()->index(numberIn(op.a, -1, rows), numberIn(op.a / 64U, 0, 3));
    table->setCurrentIndex(index);
    QMetaObject::invokeMethod(table, "clicked", Q_ARG(QModelIndex, index));
}

/// Both sources of a curve, of any module that is there.
void Player::sources(const Op &op)
{
    const QPointer<ContainerInterface> container = chosen(op);
    Op part = op;
    for (part.b = op.b & ~1U; part.b <= (op.b | 1U); ++part.b) {
        auto *const box = container->findChild<ComboBox *>(partName("cmbm", part));
        if (box == nullptr || box->count() == 0) {
            return;
        }
        box->setCurrentIndex(-1);
        box->setCurrentIndex(numberIn(op.a, 0, box->count() - 1));
        part.a = (op.a / 8U) * 65U; // any row, the first column
        table(part);
    }
    const QList<QCheckBox *> boxes = container->findChildren<QCheckBox *>();
    for (QCheckBox *const each : boxes) {
        if (each->property("ColorName").isValid() && !each->isChecked()) {
            each->click();
        }
    }
}

void Player::checkBox(const Op &op)
{
    const ContainerInterface *const container = chosen(op);
    auto *const box = pick(container->findChildren<QCheckBox *>(), op.a);
    if (box != nullptr && container->parent() != nullptr) {
        box->click();
    }
}

void Player::radio(const Op &op)
{
    if (auto *const button = pick(chosen(op)->findChildren<QRadioButton *>(), op.a)) {
        button->click();
    }
}

void Player::resize(const Op &op)
{
    QWidget *const outer = m_host->frame != nullptr && op.b % 2U == 0U ? m_host->frame : m_host->window(op.container());
    QWidget *const target = outer == nullptr || op.b % 5U == 0U ? chosen(op) : outer;
    const quint32 range = op.b / 2U % 12U;
    const QSize size = range == 0U   ? QSize(4000, 3000)
                       : range == 1U ? QSize(numberIn(op.a, 1, 4000), numberIn(op.a >> 16U, 1, 3000))
                       : range < 5U  ? QSize(numberIn(op.a, 1, 60), numberIn(op.a >> 16U, 1, 60))
                                     : QSize(numberIn(op.a, 1, 1200), numberIn(op.a >> 16U, 1, 900));
    target->resize(size);
}

void Player::visibility(const Op &op)
{
    QWidget *const window = m_host->window(op.container());
    QWidget *const target = window == nullptr || op.a % 2U == 0U ? static_cast<QWidget *>(chosen(op)) : window;
    target->setVisible(op.a % 5U != 0U);
}

void Player::look(const Op &op)
{
    QWidget *const target = op.b % 3U == 0U ? plotOf(chosen(op)) : static_cast<QWidget *>(chosen(op));
    if (target == nullptr) {
        return;
    }
    QPalette palette;
    switch (op.a % 8U) {
    case 0:
        palette.setColor(QPalette::Shadow, QColor::fromRgba(op.b));
        palette.setColor(QPalette::Light, QColor::fromRgba(op.c));
        target->setPalette(palette);
        break;
    case 1:
        QApplication::setPalette(op.b % 2U == 0U ? QPalette() : QPalette(QColor(40, 40, 40)));
        break;
    case 2:
    case 3:
        target->setFont(QFont("DejaVu Sans", numberIn(op.b, 1, 60)));
        break;
    case 4:
        QApplication::setLayoutDirection(op.b % 2U == 0U ? Qt::LeftToRight : Qt::RightToLeft);
        break;
    case 5: {
        QEvent language(QEvent::LanguageChange);
        QCoreApplication::sendEvent(target, &language);
        break;
    }
    case 6:
        if (op.b % 16U == 0U) {
            QApplication::setStyle(QStyleFactory::create(op.c % 2U == 0U ? "Fusion" : "Windows"));
        }
        break;
    default:
        target->setFont(QFont());
    }
}

void Player::state(const Op &op)
{
    QWidget *const target = widget(op);
    switch (op.b / 8U % 4U) {
    case 0:
        target->setEnabled(op.c / 2U % 4U != 0U);
        break;
    case 1:
        chosen(op)->setEnabled(op.c / 2U % 4U != 0U);
        break;
    default:
        target->setFocus();
    }
}
