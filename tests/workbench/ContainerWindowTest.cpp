#include "ContainerWindow.h"
#include "GuardedTest.h"

#include "host/ContainerInterface.h"
#include "host/DynamicProperty.h"

#include <QPixmap>
#include <QSizeGrip>

#include <memory>

namespace
{

/// A container that asks for certain window properties when initialised, and leaves its window as containers do.
class ProbeContainer : public ContainerInterface
{
    Q_OBJECT

public:
    ProbeContainer()
        : ContainerInterface(QStringLiteral("probe"), QStringLiteral("Probe"), 6, nullptr, QString(), nullptr)
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        setWindowIcon(QIcon(pixmap));
    }

    void init(QWidget *window) override
    {
        parentAtInit = parent();
        connect(window, SIGNAL(finished(int)), SLOT(finished(int)));
        setProperty(DynamicProperty::WindowFlags, flags);
        setProperty(DynamicProperty::WindowModal, isModal);
        setProperty(DynamicProperty::WindowAddSizeGrip, hasGrip);
    }

public slots:
    void finished(int code) override
    {
        codes.append(code);
        if (!leaves) {
            return;
        }
        disconnect();
        parent()->deleteLater();
        setParent(nullptr);
    }

public:
    QVariant flags = static_cast<unsigned int>(Qt::SubWindow);
    bool isModal = false;
    bool hasGrip = true;
    bool leaves = true;
    QObject *parentAtInit = nullptr;
    QList<int> codes;
};

void deleteDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

/// Openings, closings and ends of container windows, in every order.
class ContainerWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void honoursProperties_data();
    void honoursProperties();
    void closesAndReopens();
    void isDestroyedWithContainerInside_data();
    void isDestroyedWithContainerInside();
    void survivesContainersEnd();
};

void ContainerWindowTest::honoursProperties_data()
{
    QTest::addColumn<QVariant>("flags");
    QTest::addColumn<bool>("isModal");
    QTest::addColumn<bool>("hasGrip");
    QTest::addColumn<bool>("isForWorkspace");
    QTest::addColumn<Qt::WindowModality>("modality");

    QTest::newRow("sub-window") << QVariant(18U) << false << true << true << Qt::NonModal;
    QTest::newRow("sub-window, modal is meaningless") << QVariant(18U) << true << false << true << Qt::NonModal;
    QTest::newRow("dialog") << QVariant(uint(Qt::Dialog)) << false << true << false << Qt::NonModal;
    QTest::newRow("modal dialog") << QVariant(uint(Qt::Dialog)) << true << false << false << Qt::ApplicationModal;
    QTest::newRow("nothing said") << QVariant() << false << false << false << Qt::NonModal;
}

void ContainerWindowTest::honoursProperties()
{
    QFETCH(QVariant, flags);
    QFETCH(bool, isModal);
    QFETCH(bool, hasGrip);
    QFETCH(bool, isForWorkspace);
    QFETCH(Qt::WindowModality, modality);

    ProbeContainer container;
    container.flags = flags;
    container.isModal = isModal;
    container.hasGrip = hasGrip;
    ContainerWindow window(&container);
    QCOMPARE(container.parentAtInit, &window);
    QCOMPARE(container.parent(), &window);
    QCOMPARE(window.isForWorkspace(), isForWorkspace);
    QCOMPARE(window.windowModality(), modality);
    QCOMPARE(window.findChild<QSizeGrip *>() != nullptr, hasGrip);
    QCOMPARE(window.windowTitle(), QStringLiteral("Probe"));
    QCOMPARE(window.windowIcon().cacheKey(), container.windowIcon().cacheKey());
    if (!isForWorkspace) {
        QVERIFY(window.isWindow());
        QCOMPARE(window.windowType(), flags.isValid() ? Qt::Dialog : Qt::Window);
    }
}

void ContainerWindowTest::closesAndReopens()
{
    ProbeContainer container;
    for (int opening = 1; opening <= 3; ++opening) {
        QPointer<ContainerWindow> window = new ContainerWindow(&container);
        window->show();
        QVERIFY(container.isVisible());
        window->close();
        QVERIFY(window->container() == nullptr);
        QVERIFY(container.parent() == nullptr);
        QVERIFY(!container.isVisible());
        deleteDeferred();
        QVERIFY(window.isNull());
        QCOMPARE(container.codes.size(), opening);
    }
    QCOMPARE(container.codes, QList<int>({0, 0, 0}));
}

void ContainerWindowTest::isDestroyedWithContainerInside_data()
{
    QTest::addColumn<bool>("leaves");
    QTest::newRow("container leaves") << true;
    QTest::newRow("container stays") << false;
}

void ContainerWindowTest::isDestroyedWithContainerInside()
{
    QFETCH(bool, leaves);
    QPointer<ProbeContainer> container = new ProbeContainer;
    container->leaves = leaves;
    delete new ContainerWindow(container);
    deleteDeferred();
    QVERIFY(!container.isNull());
    QVERIFY(container->parent() == nullptr);
    QCOMPARE(container->codes.size(), 1);
    delete container;
}

void ContainerWindowTest::survivesContainersEnd()
{
    auto container = std::make_unique<ProbeContainer>();
    ContainerWindow window(container.get());
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    container.reset();
    QVERIFY(window.container() == nullptr);
    QVERIFY(window.close());
}

GUARDED_TEST_MAIN(ContainerWindowTest)
#include "ContainerWindowTest.moc"
