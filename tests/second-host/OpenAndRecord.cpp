// Loads the plugin into the second host, opens it, chooses two sources, records them, and lets go of it again.
// open-and-record PLUGIN_FILE; exit code 0 when all went as it should.

#include "secondhost/commands.h"
#include "secondhost/plugins.h"
#include "secondhost/registers.h"
#include "secondhost/widgets.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFileDialog>
#include <QLibrary>
#include <QPluginLoader>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <cstdio>
#include <cstdlib>

namespace
{

void require(bool holds, const char *what) {
    if (holds) return;
    std::fprintf(stderr, "FAILED: %s\n", what);
    std::_Exit(1);
}

template<typename Condition> bool comesTrue(Condition condition) { return QTest::qWaitFor(condition, 30000); }

void refuseWarnings(QtMsgType type, const QMessageLogContext &, const QString &text) {
    // The platform without a screen says of itself what it cannot do.
    if (type != QtDebugMsg && type != QtInfoMsg && !text.startsWith("This plugin does not support"))
        require(false, qPrintable(text));
}

// Answers the n-th exchange with n for parameter 1 and with n * n for parameter 2.
class CountingChannel : public CommandHandlerInterface
{
public:
    void sendCommandCombos(QList<CommandCombo *> combos) override {
        ++exchanges;
        for (CommandCombo *combo : combos) {
            const Command &request = combo->request;
            require(request.command() == 6 && request.address() == 7, "requests are the chosen ones");
            combo->reply.setValue(request.type() == 1 ? exchanges : exchanges * exchanges);
        }
    }

    int exchanges = 0;
};

KAROModuleInterface *makeModule(CountingChannel *channel) {
    auto *module = new KAROModuleInterface("Drive", "bus/Drive", 1, 7, channel);
    module->registers.append(new Register(0x10, 32, "Status", module));
    for (const QString name : {"position", "torque"}) {
        auto &parameters = module->parameterMaps["axis0"];
        Parameter parameter;
        parameter.number = parameters.size() + 1;
        parameter.name = name;
        parameter.access = "r";
        parameters.insert("par::" + name, parameter);
    }
    return module;
}

QDialog *open(ContainerInterface *container) {
    auto *window = new QDialog;
    (new QVBoxLayout(window))->addWidget(container);
    container->init(window);
    window->show();
    require(QTest::qWaitForWindowExposed(window), "the window opens");
    return window;
}

void close(QDialog *opened, ContainerInterface *container) {
    const QPointer<QDialog> window(opened);
    opened->close();
    require(container->parent() == nullptr, "the plugin leaves the window that closes");
    require(comesTrue([&] { return window.isNull(); }), "the window goes");
}

void chooseSource(QDialog *window, const char *pages, int row) {
    QWidget *page = window->findChild<QStackedWidget *>(pages)->currentWidget();
    for (ComboBox *box : page->findChildren<ComboBox *>()) QTest::keyClick(box, Qt::Key_Down);
    auto *table = page->findChild<QTableView *>();
    require(table->isVisible() && table->model() && table->model()->rowCount() == 2, "the table shows the parameters");
    const QRect cell = table->visualRect(table->model()->index(row, 2));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}

template<typename Button> void click(QDialog *window, const char *name) {
    QTest::mouseClick(window->findChild<Button *>(name), Qt::LeftButton);
}

int curvePixels(QDialog *window) {
    const QImage picture = window->findChild<QWidget *>("widgetPlot")->grab().toImage();
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor color = picture.pixelColor(x, y);
            count += color.red() > 150 && color.green() < 90 && color.blue() < 110;
        }
    }
    return count;
}

int recordedLines(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().count(secondhost::lineBreak) : 0;
}

void record(QDialog *window, const QString &path) {
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            answer.stop();
            dialog->selectFile(path);
            static_cast<QDialog *>(dialog)->accept();
        }
    });
    answer.start(0);
    auto *log = window->findChild<QCheckBox *>("cbLog");
    log->click();
    require(comesTrue([&] { return recordedLines(path) >= 6; }), "lines arrive in the log");
    log->click();

    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the log can be read");
    QByteArray rest = file.readAll();
    for (const QByteArray expected : {"Module:;Drive [Axis 0];Drive [Axis 0];", "Counter;position ;torque ;", "1;"}) {
        require(rest.startsWith(expected), expected);
        require(expected == "1;" || rest.mid(expected.size()).startsWith(secondhost::lineBreak), "ends as the host's");
        rest = rest.mid(rest.indexOf(secondhost::lineBreak) + int(qstrlen(secondhost::lineBreak)));
    }
    for (int number = 2; !rest.isEmpty(); ++number) {
        const int end = rest.indexOf(secondhost::lineBreak);
        const QList<QByteArray> fields = rest.left(end).split(';');
        require(fields.size() == 4 && fields[0].toInt() == number, "a line of the log");
        require(fields[2].toInt() == fields[1].toInt() * fields[1].toInt() && fields[1].toInt() > 0, "its values");
        rest = rest.mid(end + int(qstrlen(secondhost::lineBreak)));
    }
}

} // namespace

int main(int argc, char *argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    qInstallMessageHandler(refuseWarnings);
    require(argc == 2, "the plugin's file is named");
    const QString pluginFile = QFileInfo(argv[1]).absoluteFilePath();
    const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());

    QPluginLoader loader(pluginFile);
    loader.setLoadHints(QLibrary::ResolveAllSymbolsHint);
    require(loader.metaData().value("IID").toString() == SECONDHOST_CONTAINER_ID, "it is made for this host");
    require(loader.load(), "every symbol is there");
    auto *prototype = qobject_cast<ContainerInterface *>(loader.instance());
    require(prototype != nullptr, "its root is a container");

    CountingChannel channel;
    PluginHandler handler;
    const QScopedPointer<KAROModuleInterface> module(makeModule(&channel));
    handler.modules.append(module.data());
    PluginInterface *clone = prototype->clone("Plot 1", &handler);
    auto *container = qobject_cast<ContainerInterface *>(clone);

    QDialog *window = open(container);
    chooseSource(window, "dockWidgetContentsX", 0);
    chooseSource(window, "dockWidgetContentsY", 1);
    require(comesTrue([&] { return channel.exchanges > 2; }), "it samples");
    require(!channel.circularMode(), "the channel left its circular mode");
    const int before = curvePixels(window);
    require(comesTrue([&] { return curvePixels(window) > before + 50; }), "the curve grows on the screen");
    record(window, folder.filePath("log.csv"));
    click<QPushButton>(window, "btnCamera");
    require(QFile::exists("xyp.png"), "the host took a picture");
    click<QPushButton>(window, "btnExport");
    auto *exported = window->findChild<ExportCSV *>();
    require(exported != nullptr && exported->findChild<QTableView *>()->model()->rowCount() > 2, "points are exported");

    close(window, container);
    window = open(container);
    handler.modules.clear();
    container->handleModulePlugin(module.data(), module->name());
    auto *box = window->findChildren<ComboBox *>(QRegularExpression("cmbm.+")).first();
    require(comesTrue([&] { return box->currentText().isEmpty(); }), "a module that left is offered no more");
    close(window, container);
    delete clone;
    QFile mapped("/proc/self/maps");
    require(loader.unload() && mapped.open(QIODevice::ReadOnly), "it unloads");
    require(!mapped.readAll().contains(QFile::encodeName(pluginFile)), "nothing of it stays in memory");
    std::puts("loaded, opened, sampled, recorded, closed, opened again, closed, unloaded");
    return 0;
}
