#include "GrowingPlot.h"
#include "application/Language.h"
#include "application/Options.h"

#include <QAbstractItemView>
#include <QAction>
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
    QSet<QString> keys; ///< shortcuts, as they are shown
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
        if (const auto *const action = qobject_cast<const QAction *>(object)) {
            texts.keys.insert(action->shortcut().toString(QKeySequence::NativeText));
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
    plot.window->offerAppearance(Language::codes());
    plot.container->findChild<QPushButton *>(QStringLiteral("btnExport"))->click();
    const QList<QAction *> actions = plot.window->findChildren<QAction *>();
    for (QAction *const action : actions) {
        if (action->menuRole() == QAction::AboutRole || action->shortcut() == QKeySequence(QStringLiteral("Ctrl+F1"))) {
            action->trigger(); // opens a window
        }
    }
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
    QStringLiteral(
        "KARO_GAP|XY-Plotter:?|(XY Plot Workbench - )?\\[?XY-Plotter\\]?|default|workbench"), // the last two are categories
    QStringLiteral("Modbus &?(TCP|RTU)…"),
    // Words that German has, too.
    QStringLiteral(
        "Bank 2|Export|Intervall [0-9]+ ms|Module|Name|&?Plot|&?System|Deutsch|English|Alt\\+1|F[0-9]|Return|XY "
        "Plot Workbench [0-9.]+"),
    // Not the program's: paths, times, what Qt's platform plugin for tests reports.
    QStringLiteral("/.*|.*_xyPlotter\\.csv|[0-9]+ [A-Z][a-z]+ [0-9]+ [0-9:]+|This plugin does not support .*"),
};

bool isInternational(const QString &text)
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(international.join(QLatin1Char('|'))));
    return pattern.match(text).hasMatch();
}

/// The lines of a page of the guide.
QStringList guide(const char *path)
{
    QFile file(QLatin1String(DOCUMENT_FOLDER "/") + QLatin1String(path));
    REQUIRE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

/// All that \a pattern, with one group, finds in a page, whose paragraphs are joined to lines.
QStringList found(const char *path, const char *pattern)
{
    const QString text = guide(path).join(QLatin1Char(' '));
    QStringList all;
    auto match = QRegularExpression(QLatin1String(pattern)).globalMatch(text);
    while (match.hasNext()) {
        all.append(match.next().captured(1).simplified());
    }
    return all;
}

/// What a page has to have in common with its translation: headings, entries, cells, pictures, links, numbers of code.
QStringList skeleton(const char *path)
{
    static const QRegularExpression beginning(QStringLiteral("^(#+|-|[0-9]\\.|\\|) |^(```|!)"));
    static const QRegularExpression target(QStringLiteral("\\]\\((?:\\.\\./)?([^)]*)\\)"));
    QStringList bones;
    const QStringList lines = guide(path);
    for (const QString &line : lines) {
        const QString mark = beginning.match(line).captured(0).trimmed();
        if (!mark.isEmpty()) {
            bones.append(mark == QLatin1String("|") ? QString(line.count(QLatin1Char('|')), u'|') : mark);
        }
        auto links = target.globalMatch(line);
        while (links.hasNext()) {
            bones.append(links.next().captured(1));
        }
    }
    return bones;
}

/// The macros that divide a manual page, and what its entries are about: options, files, variables.
QStringList entriesOfManual(const char *path)
{
    static const QRegularExpression subject(QStringLiteral("\\\\-\\\\-[a-z\\\\-]+|^\\.I .*|[A-Z_]{6,}"));
    QStringList entries;
    bool isSubject = false;
    const QStringList lines = guide(path);
    for (const QString &line : lines) {
        if (isSubject || line.startsWith(QLatin1String(".SH"))) {
            entries.append(line.left(3) + (isSubject ? subject.match(line).captured(0) : QString()));
        }
        isSubject = line == QLatin1String(".TP");
    }
    return entries;
}

} // namespace

/// The program and its guide in both languages.
class LanguagesTest : public GuardedTest
{
    Q_OBJECT

private slots:
    /// The first function: the others use what it collects, and the translations stay until the program ends.
    void noTextIsLeftInEnglish()
    {
        if (!QFile::exists(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + QStringLiteral("/qtbase_de.qm"))) {
            QSKIP("Qt's own translations are not installed");
        }
        collectAllWindows(temporaryPath("english.csv"), m_english);
        Language::use(QStringLiteral("de"));
        const QString link = temporaryPath("linked.so"); // as in a folder of the user's
        QVERIFY(QFile::link(QStringLiteral(PLUGIN), link));
        Language::useForPlugin(link);
        collectAllWindows(temporaryPath("german.csv"), m_german);
        for (const char *const expected :
             {"Aktualisieren", "Meldungen", "Tabelle exportieren", "Speichern", "Befehl"}) {
            QVERIFY2(m_german.found.contains(QString::fromUtf8(expected)), expected);
        }
        QStringList left;
        for (const QString &text : qAsConst(m_german.found)) {
            if (m_english.found.contains(text) && !isInternational(text)) {
                left.append(text);
            }
        }
        left.sort();
        QVERIFY2(left.isEmpty(), qPrintable(left.join(QLatin1Char('\n'))));
        QCOMPARE(QLocale().toString(20000.5, 'f', 1), QStringLiteral("20.000,5"));
    }

    void guideNamesWhatIsThere_data()
    {
        QTest::addColumn<bool>("isGerman");
        QTest::newRow("user-guide.md") << false;
        QTest::newRow("de/user-guide.md") << true;
    }

    /// What is bold in the guide can be read in the window, and keys in the guide are those of the window.
    void guideNamesWhatIsThere()
    {
        QFETCH(bool, isGerman);
        const Texts &window = isGerman ? m_german : m_english;
        if (window.found.isEmpty()) {
            QSKIP("the texts of the windows are not known");
        }
        QSet<QString> shown;
        for (QString text : qAsConst(window.found)) {
            static const QRegularExpression mark(QStringLiteral("&|\\.\\.\\.$|\u2026$|:$"));
            shown.insert(text.remove(mark).trimmed());
        }
        const char *const page = QTest::currentDataTag();
        const QStringList names = found(page, "\\*\\*([^*]+)\\*\\*");
        QVERIFY(names.size() > 15);
        QStringList unknown;
        for (const QString &name : names) {
            if (!shown.contains(name)) {
                unknown.append(name);
            }
        }
        const QStringList keys = found(page, "`((?:Ctrl|Alt|Shift|Strg|Umschalt)\\+[^`]+|F[0-9]+)`");
        QVERIFY(keys.size() > 20);
        for (const QString &key : keys) {
            if (!window.keys.contains(key) && key != QLatin1String("Alt+9")) { // there is one container only
                unknown.append(key);
            }
        }
        QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join(QLatin1Char('\n'))));
    }

    void guidesSayTheSame()
    {
        QCOMPARE(skeleton("de/user-guide.md"), skeleton("user-guide.md"));
        for (const char *const page : {"user-guide.md", "de/user-guide.md"}) {
            const QDir folder = QFileInfo(QLatin1String(DOCUMENT_FOLDER "/") + QLatin1String(page)).dir();
            const QStringList targets = found(page, "\\]\\(([^)#]+)[^)]*\\)");
            QVERIFY(targets.size() > 3);
            for (const QString &target : targets) {
                QVERIFY2(folder.exists(target), qPrintable(target));
            }
        }
    }

    /// The same parts, the same options and files in the same order.
    void manualsSayTheSame()
    {
        const QStringList english = entriesOfManual("../packaging/xy-plot-workbench.1.in");
        auto option = QRegularExpression(QStringLiteral("\n  --([a-z-]+)")).globalMatch(optionsHelp());
        QVERIFY(option.hasNext());
        while (option.hasNext()) {
            const QString name = option.next().captured(1).replace(QLatin1Char('-'), QLatin1String("\\-"));
            QVERIFY2(!english.filter(QLatin1String("\\-\\-") + name).isEmpty(), qPrintable(name));
        }
        QCOMPARE(entriesOfManual("../packaging/xy-plot-workbench.de.1.in"), english);
    }

private:
    Texts m_english;
    Texts m_german;
};

GUARDED_TEST_MAIN(LanguagesTest)
#include "LanguagesTest.moc"
