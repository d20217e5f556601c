#include "window/ContainerWindow.h"

#include "window/NoticeBar.h"

#include "host/ContainerInterface.h"
#include "host/DynamicProperty.h"

#include <QCloseEvent>
#include <QIcon>
#include <QSizeGrip>
#include <QTableView>
#include <QVBoxLayout>

ContainerWindow::ContainerWindow(ContainerInterface *container, QWidget *parent)
    : QWidget(parent), m_notices(new NoticeBar), m_container(container)
{
    setAttribute(Qt::WA_DeleteOnClose);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_notices);
    layout->addWidget(container, 1); // a container expects to be the window's child when it is initialised
    container->init(this);
    applyProperties();
    disableTabInTables();
    container->show(); // a container that has left a window before is hidden
}

ContainerWindow::~ContainerWindow()
{
    releaseContainer();
}

ContainerInterface *ContainerWindow::container() const
{
    return m_hasFinished ? nullptr : m_container.data();
}

bool ContainerWindow::isForWorkspace() const
{
    return m_isForWorkspace;
}

void ContainerWindow::setNotices(const QStringList &notices)
{
    m_notices->setNotices(notices);
}

QSize ContainerWindow::minimumSizeHint() const
{
    // A container's layout may allow less than its hint, which in turn may be more than it needs to be of use.
    constexpr QSize usable(820, 430); // widget pixels
    if (m_container.isNull()) {
        return QWidget::minimumSizeHint();
    }
    const QSize needed = m_container->minimumSizeHint().boundedTo(usable).expandedTo(m_container->minimumSize());
    const int barHeight = m_notices->isHidden() ? 0 : m_notices->height();
    return needed + QSize(0, barHeight);
}

void ContainerWindow::closeEvent(QCloseEvent *event)
{
    releaseContainer();
    event->accept();
}

void ContainerWindow::applyProperties()
{
    setWindowTitle(m_container->windowTitle());
    setWindowIcon(m_container->windowIcon());

    // The properties are the container's to set while it is initialised: they must not be read earlier.
    const Qt::WindowFlags flags(static_cast<int>(m_container->property(DynamicProperty::WindowFlags).toUInt()));
    m_isForWorkspace = (flags & Qt::WindowType_Mask) == Qt::SubWindow;
    if (!m_isForWorkspace) {
        setWindowFlags(flags | Qt::Window);
        const bool isModal = m_container->property(DynamicProperty::WindowModal).toBool();
        setWindowModality(isModal ? Qt::ApplicationModal : Qt::NonModal);
    }
    if (m_container->property(DynamicProperty::WindowAddSizeGrip).toBool()) {
        // In a row of its own, for a container may draw into its last corner.
        layout()->addWidget(new QSizeGrip(this));
        layout()->setAlignment(layout()->itemAt(2)->widget(), Qt::AlignRight | Qt::AlignBottom);
    }
}

void ContainerWindow::disableTabInTables()
{
    // Else the Tab key would only go from cell to cell, and a table could not be left by keyboard.
    const QList<QTableView *> tables = findChildren<QTableView *>();
    for (QTableView *const table : tables) {
        table->setTabKeyNavigation(false);
    }
}

void ContainerWindow::releaseContainer()
{
    if (m_hasFinished) {
        return;
    }
    m_hasFinished = true;
    emit finished(0);
    if (m_container != nullptr && m_container->parent() == this) {
        m_container->setParent(nullptr); // one that stayed must not die with its window
    }
}
