#include "GrowingPlot.h"
#include "application/Language.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHeaderView>
#include <QLibraryInfo>
#include <QMetaProperty>
#include <QPushButton>
#include <QSet>

namespace
{

/// Properties of type QString that nobody reads on the screen.
const QSet<QByteArray> unseenProperties{"objectName", "styleSheet", "windowFilePath", "windowRole", "html"};

/// Copies of texts: those of a plugin are gone with its file.
struct Texts
{
    Texts &operator<<(const QString &text)
    {
        found.insert(QString(text.constData(), text.size()));
        return *this;
    }

    QSet<QString> found;
};

void collectCell(const QAbstractItemModel *model, const QModelIndex &cell, bool isPluginTable, Texts &texts)
{
    texts << model->data(cell, Qt::ToolTipRole).toString() << model->data(cell, Qt::StatusTipRole).toString()
          << model->data(cell, Qt::AccessibleTextRole).toString();
    if (!isPluginTable) { // the names of values are the modules' own
        texts << model->data(cell, Qt::DisplayRole).toString();
    }
}

/// The texts of a list or table: of its headers, and of its cells.
void collectItems(const QAbstractItemView *view, Texts &texts)
{
    const QAbstractItemModel *const model = view->model();
    if (model == nullptr || qobject_cast<const QHeaderView *>(view) != nullptr) { // whose items are the table's
        return;
    }
    const bool listsFiles = qobject_cast<const QFileDialog *>(view->window()) != nullptr;
    const bool isPluginTable = view->objectName().startsWith(QLatin1String("cmds"));
    for (int column = 0; column < model->columnCount(); ++column) {
        texts << model->headerData(column, Qt::Horizontal).toString()
              << model->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString();
        for (int row = 0; !listsFiles && row < model->rowCount(); ++row) {
            collectCell(model, model->index(row, column), isPluginTable, texts);
        }
    }
}

/// Everything that can be read in \a top: captions, tool tips, names for screen readers, entries, headers.
void collect(const QObject *top, Texts &texts)
{
    QList<const QObject *> objects = {top};
    const QList<QObject *> children = top->findChildren<QObject *>();
    for (const QObject *const child : children) {
        objects.append(child);
    }
    for (const QObject *const object : qAsConst(objects)) {
        const QMetaObject *const meta = object->metaObject();
        for (int i = 0; i < meta->propertyCount(); ++i) {
            const QMetaProperty property = meta->property(i);
            if (property.type() == QVariant::String && !unseenProperties.contains(property.name())) {
                texts << property.read(object).toString();
            }
        }
        if (const auto *const box = qobject_cast<const QComboBox *>(object)) {
            for (int entry = 0; entry < box->count(); ++entry) {
                texts << box->itemText(entry) << box->itemData(entry, Qt::ToolTipRole).toString();
            }
        }
        if (const auto *const view = qobject_cast<const QAbstractItemView *>(object)) {
            collectItems(view, texts);
        }
    }
}

/// The texts of the window, of the dialogs that it opens, and of the table that the plugin exports.
void collectAllWindows(const QString &log, Texts &texts)
{
    GrowingPlot plot(QStringLiteral("two-modules"));
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget())) {
            poll.stop();
            collect(dialog, texts);
            dialog->selectFile(log);
            static_cast<QDialog *>(dialog)->accept();
        }
    });
    poll.start(0);
    MouseClick::on(plot.watch->box());
    plot.workbench.modules().setSilent(1, true);
    QTRY_VERIFY_WITH_TIMEOUT(linesOf(log).size() > 6, maximumWaitMs);
    plot.window->recordings()->poll();
    plot.window->showHint();
    plot.container->findChild<QPushButton *>(QStringLiteral("btnExport"))->click();
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *const window : windows) {
        collect(window, texts);
    }
}

/// What is the same in both languages, and rightly so; patterns of whole texts.
const QStringList international{
    QStringLiteral("[^A-Za-z]*"),
    QStringLiteral(" *[0-9]+ m?s"),
    // Names of modules, motors and values: they are in logs, in set-ups and in the settings.
    QStringLiteral("(.*/)?(Stepper|Servo)"),
    QStringLiteral("\\s*[^\\[]+ \\[Axis 0\\]\\s[^\\[]+\\[[^\\]]+\\]\\s*"),
    QStringLiteral("  (Axis [0-9]|Register)"),
    QStringLiteral("KARO_GAP|XY-Plotter:?|default"), // the last is a category of messages
    // Words that German has, too.
    QStringLiteral("Bank 2|Export|Intervall [0-9]+ ms|Module|Name"),
    // Not the program's: paths, times, what Qt's platform plugin for tests reports.
    QStringLiteral("/.*|.*_xyPlotter\\.csv|[0-9]+ [A-Z][a-z]+ [0-9]+ [0-9:]+|This plugin does not support .*"),
};

bool isInternational(const QString &text)
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(international.join(QLatin1Char('|'))));
    return pattern.match(text).hasMatch();
}

} // namespace

/// The program in German: no text of any window is left in English.
class GermanWindowTest : public GuardedTest
{
    Q_OBJECT

private slots:
    void noTextIsLeftInEnglish()
    {
        if (!QFile::exists(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_de.qm"))) {
            QSKIP("Qt's own translations are not installed");
        }
        Texts english;
        collectAllWindows(temporaryPath("english.csv"), english);
        Language::use(QStringLiteral("de"));
        Language::useForPlugin(QStringLiteral(PLUGIN));
        Texts german;
        collectAllWindows(temporaryPath("german.csv"), german);
        for (const char *const expected :
             {"Aktualisieren", "Meldungen", "Tabelle exportieren", "Speichern", "Befehl"}) {
            QVERIFY2(german.found.contains(QString::fromUtf8(expected)), expected);
        }
        QStringList left;
        for (const QString &text : qAsConst(german.found)) {
            if (english.found.contains(text) && !isInternational(text)) {
                left.append(text);
            }
        }
        left.sort();
        QVERIFY2(left.isEmpty(), qPrintable(left.join(QLatin1Char('\n'))));
    }
};

GUARDED_TEST_MAIN(GermanWindowTest)
#include "GermanWindowTest.moc"
