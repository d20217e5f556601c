// Uses a container plugin as a host and its user do: loads it, opens it,
// chooses sources, records, closes, opens again, unplugs the module, unloads,
// and loads it again.
//   check-plugin PLUGIN_FILE
// The exit code is 0 when all went as it should.

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

#include "secondhost/command_channel.hpp"
#include "secondhost/plugin_bases.hpp"
#include "secondhost/register_list.hpp"
#include "secondhost/widgets.hpp"

namespace {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "FAILED: %s\n", what);
  std::_Exit(1);
}

template <typename Condition>
bool ComesTrue(Condition condition) {
  return QTest::qWaitFor(condition, 30000);
}

void RefuseWarnings(QtMsgType type, const QMessageLogContext&,
                    const QString& text) {
  // The offscreen platform warns of what it cannot do.
  if (type != QtDebugMsg && type != QtInfoMsg &&
      !text.startsWith("This plugin does not support"))
    Require(false, qPrintable(text));
}

// Answers the n-th exchange with n for parameter 1, with n * n for parameter
// 2, and with n in the bits 4 to 11 for the register.
class CountingChannel : public CommandHandlerInterface {
 public:
  void sendCommandCombos(QList<CommandCombo*> combos) override {
    ++exchanges_;
    for (CommandCombo* combo : combos) {
      Command& asked = combo->request;
      Require(asked.address_ == 7, "the module is asked by its address");
      if (asked.command_ == 148) {
        Require(asked.type_ == 0x12, "a register is asked by its address");
        combo->reply.value_ = (exchanges_ << 4) | 0xF;
        ++register_reads_;
      } else {
        Require(asked.command_ == 6, "an axis parameter is asked for");
        combo->reply.value_ =
            asked.type_ == 1 ? exchanges_ : exchanges_ * exchanges_;
      }
    }
  }

  int exchanges_ = 0;
  int register_reads_ = 0;
};

KAROModuleInterface* MakeModule(CountingChannel* channel) {
  auto* module = new KAROModuleInterface("Drive", "bus/Drive");
  module->address_ = 7;
  module->command_channel_ = channel;
  int number = 0;
  for (const char* name : {"position", "torque"}) {
    Parameter parameter;
    parameter.number = ++number;
    parameter.name = name;
    parameter.access = "r";
    module->parameters_["axis0"].insert(QString("par::") + name, parameter);
  }
  auto* status = new RegisterSet(0x12, 32, "Status", module);
  new Register(4, 8, "Load", status);
  module->registers_.append(status);
  return module;
}

QDialog* Open(ContainerInterface* container) {
  auto* window = new QDialog;
  auto* layout = new QVBoxLayout(window);
  layout->addWidget(container);
  container->init(window);
  window->show();
  Require(QTest::qWaitForWindowExposed(window), "the window opens");
  return window;
}

void Close(QDialog* opened, ContainerInterface* container) {
  QPointer<QDialog> window(opened);
  opened->close();
  Require(container->parent() == nullptr, "the plugin leaves its window");
  Require(ComesTrue([&] { return window.isNull(); }), "the window goes");
}

// `motor` is the row in the second box: the axes, then the registers.
void ChooseSource(QDialog* window, const char* pages, int motor, int row,
                  int rows) {
  QWidget* page = window->findChild<QStackedWidget*>(pages)->currentWidget();
  QList<ComboBox*> boxes = page->findChildren<ComboBox*>();
  Require(boxes.size() == 2, "a page has a box of modules and one of motors");
  if (boxes[0]->currentIndex() < 0) QTest::keyClick(boxes[0], Qt::Key_Down);
  while (boxes[1]->currentIndex() < motor)
    QTest::keyClick(boxes[1], Qt::Key_Down);
  auto* table = page->findChild<QTableView*>();
  Require(table->isVisible() && table->model()->rowCount() == rows,
          "the table shows what can be read");
  QRect cell = table->visualRect(table->model()->index(row, 2));
  QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                    cell.center());
}

template <typename Button>
void Click(QDialog* window, const char* name) {
  QTest::mouseClick(window->findChild<Button*>(name), Qt::LeftButton);
}

int CurvePixels(QDialog* window) {
  QImage picture = window->findChild<QWidget*>("widgetPlot")->grab().toImage();
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      QColor color = picture.pixelColor(x, y);
      count += color.red() > 150 && color.green() < 90 && color.blue() < 110;
    }
  }
  return count;
}

QList<QByteArray> LinesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QByteArray rest = file.readAll();
  QList<QByteArray> lines;
  for (int end; (end = rest.indexOf(secondhost::kEndOfLine)) >= 0;) {
    lines.append(rest.left(end));
    rest = rest.mid(end + int(qstrlen(secondhost::kEndOfLine)));
  }
  // A line without an end, or a line end of another kind, stays in the rest.
  Require(rest.isEmpty(), "every line of the log ends as lines of the host do");
  return lines;
}

void Record(QDialog* window, const QString& path) {
  QTimer answer;
  QObject::connect(&answer, &QTimer::timeout, [&] {
    auto* dialog =
        qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    answer.stop();
    dialog->selectFile(path);
    static_cast<QDialog*>(dialog)->accept();
  });
  answer.start(0);
  auto* log = window->findChild<QCheckBox*>("cbLog");
  log->click();
  Require(ComesTrue([&] { return LinesOf(path).size() >= 8; }),
          "lines arrive in the log");
  log->click();

  QList<QByteArray> lines = LinesOf(path);
  Require(lines.takeFirst() == "Module:;Drive [Axis 0];Drive [Axis 0];",
          "the log names the modules");
  Require(lines.takeFirst() == "Counter;position ;torque ;",
          "the log names the values");
  int first = 0;
  for (int number = 1; number <= lines.size(); ++number) {
    QByteArray line = lines[number - 1];
    int x = line.split(';').at(1).toInt();
    if (number == 1) first = x;
    Require(line == QByteArray::number(number) + ';' + QByteArray::number(x) +
                        ';' + QByteArray::number(x * x) + ';',
            "a line of the log is number, x and y");
    Require(x == first + number - 1, "no sample is missing in the log");
  }
}

// Loads the plugin, hands a clone of its root to `use`, and unloads it.
template <typename Use>
void WithPlugin(const QString& file, PluginHandler* handler, Use use) {
  QPluginLoader loader(file);
  loader.setLoadHints(QLibrary::ResolveAllSymbolsHint);
  Require(loader.metaData().value("IID").toString() == SECONDHOST_CONTAINER,
          "the plugin is made for this host");
  Require(loader.load(), qPrintable(loader.errorString()));
  auto* prototype = qobject_cast<ContainerInterface*>(loader.instance());
  Require(prototype != nullptr, "its root is a container");
  PluginInterface* clone = prototype->clone("Plot 1", handler);
  Require(clone->version().startsWith("4.6.0"), "it has a version");
  auto* container = qobject_cast<ContainerInterface*>(clone);
  Require(container != nullptr, "a clone is a container");
  use(container);
  delete clone;
  Require(loader.unload(), "it unloads");
}

void CheckFirstOpening(ContainerInterface* container, CountingChannel* channel,
                       const QTemporaryDir& folder) {
  QDialog* window = Open(container);
  ChooseSource(window, "dockWidgetContentsX", 0, 0, 2);
  ChooseSource(window, "dockWidgetContentsY", 0, 1, 2);
  Require(ComesTrue([&] { return channel->exchanges_ > 2; }), "it samples");
  Require(!channel->is_circular_, "the channel left its circular mode");
  int before = CurvePixels(window);
  Require(ComesTrue([&] { return CurvePixels(window) > before + 50; }),
          "the curve grows on the screen");
  Record(window, folder.filePath("log.csv"));
  Click<QPushButton>(window, "btnCamera");
  Require(QFile::exists("xyp.png"), "the host took a picture");
  Click<QPushButton>(window, "btnExport");
  auto* exported = window->findChild<ExportCSV*>();
  Require(exported && exported->findChild<QTableView*>()->model()->rowCount(),
          "the points are exported");
  Close(window, container);
}

void CheckUnplugging(ContainerInterface* container, CountingChannel* channel,
                     PluginHandler* handler) {
  QDialog* window = Open(container);
  ChooseSource(window, "dockWidgetContentsY", 1, 0, 1);
  Require(ComesTrue([&] { return channel->register_reads_ > 2; }),
          "a register is read");
  Click<QPushButton>(window, "btnExport");
  QAbstractItemModel* points =
      window->findChild<ExportCSV*>()->findChild<QTableView*>()->model();
  Require(points->headerData(1, Qt::Horizontal).toString() == "Status: Load",
          "the register's field is the source");
  Require(points->index(0, 1).data() == points->index(0, 0).data(),
          "the field's bits are cut out of the register");

  // First the notice, then the module goes.
  KAROModuleInterface* module = handler->modules_.takeFirst();
  container->handleModulePlugin(module, module->name());
  delete module;
  int exchanges = channel->exchanges_;
  auto* box =
      window->findChildren<ComboBox*>(QRegularExpression("cmbm.+")).first();
  Require(ComesTrue([&] { return box->currentText().isEmpty(); }),
          "a module that left is not offered any more");
  QTest::qWait(100);
  Require(channel->exchanges_ == exchanges, "nor is it asked any more");
  Close(window, container);
}

}  // namespace

int main(int argc, char* argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  qInstallMessageHandler(RefuseWarnings);
  Require(argc == 2, "the plugin's file is named");
  const QString file = QFileInfo(argv[1]).absoluteFilePath();
  const QTemporaryDir folder;
  QDir::setCurrent(folder.path());
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());

  CountingChannel channel;
  PluginHandler handler;
  handler.modules_.append(MakeModule(&channel));
  WithPlugin(file, &handler, [&](ContainerInterface* container) {
    CheckFirstOpening(container, &channel, folder);
    CheckUnplugging(container, &channel, &handler);
  });
  WithPlugin(file, &handler, [&](ContainerInterface* container) {
    Close(Open(container), container);
  });
  std::puts("loaded, sampled, recorded, opened again, unplugged, loaded again");
  return 0;
}
