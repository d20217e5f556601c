#include "GrowingPlot.h"
#include "application/Language.h"
#include "application/Options.h"

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

/// The texts of a list or table: of its headers, and of its cells.
void collectItems(const QAbstractItemView *view, Texts &texts)
{
    const QAbstractItemModel *const model = view->model();
    if (model == nullptr || qobject_cast<const QHeaderView *>(view) != nullptr) { // whose items are the table's
        return;
    }
    const bool listsFiles = qobject_cast<const QFileDialog *>(view->window()) != nullptr;
    QVector<int> roles = {Qt::ToolTipRole, Qt::StatusTipRole, Qt::AccessibleTextRole};
    if (!view->objectName().startsWith("cmds")) { // whose names are the modules' own
        roles.append(Qt::DisplayRole);
    }
    for (int column = 0; column < model->columnCount(); ++column) {
        texts << model->headerData(column, Qt::Horizontal).toString()
              << model->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString();
        for (int row = 0; !listsFiles && row < model->rowCount(); ++row) {
            for (const int role : qAsConst(roles)) {
                texts << model->index(row, column).data(role).toString();
            }
        }
    }
}

/// Everything that can be read in \a top: captions, tool tips, names for screen readers, entries, headers.
void collect(const QObject *top, Texts &texts)
{
    QList<const QObject *> objects = {top};
    for (const QObject *const child : partsOf<QObject>(*top)) {
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
    GrowingPlot plot("two-modules");
    GrowingPlot::record(plot.watch, log, [&](const QFileDialog *dialog) { collect(dialog, texts); });
    plot.modules().setSilent(1, true);
    QTRY_VERIFY_WITH_TIMEOUT(linesOf(log).size() > 6, maximumWaitMs);
    plot.poll();
    plot.window->showHint();
    plot.window->offerAppearance(Language::codes());
    plot.container->findChild<QPushButton *>("btnExport")->click();
    for (QAction *const action : partsOf<QAction>(*plot.window)) {
        if (action->menuRole() == QAction::AboutRole || action->shortcut() == QKeySequence("Ctrl+F1")) {
            action->trigger(); // opens a window
        }
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *const window : windows) {
        collect(window, texts);
    }
}

/// Texts that may be the same in both languages; patterns of whole texts.
const QStringList international{
    "[^A-Za-z]*",
    " *[0-9]+ m?s",
    // Names of modules, motors and values: they are in logs, in set-ups and in the settings.
    "(.*/)?(Stepper|Servo)",
    "\\s*[^\\[]+ \\[Axis 0\\]\\s[^\\[]+\\[[^\\]]+\\]\\s*",
    "  (Axis [0-9]|Register)",
    "KARO_GAP|XY-Plotter:?|(XY Plot Workbench - )?\\[?XY-Plotter\\]?|default|workbench", // the last two are categories
    "Modbus &?(TCP|RTU)…",
    // Words that German has, too.
    "Bank 2|Export|Intervall [0-9]+ ms|Module|Name|&?Plot|&?System|Deutsch|English|Alt\\+1|F[0-9]|Return",
    "XY Plot Workbench [0-9.]+",
    // Not the program's: paths, times, what Qt's platform plugin for tests reports.
    "/.*|.*_xyPlotter\\.csv|[0-9]+ [A-Z][a-z]+ [0-9]+ [0-9:]+|This plugin does not support .*",
};

bool isInternational(const QString &text)
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(international.join('|')));
    return pattern.match(text).hasMatch();
}

/// The lines of a page of the guide.
QStringList pageLines(const char *path)
{
    QFile file(QString(DOCUMENT_FOLDER "/") + path);
    REQUIRE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll()).split('\n');
}

/// All matches of the one group of \a pattern in a page, whose lines are joined.
QStringList foundIn(const char *path, const char *pattern)
{
    const QString text = pageLines(path).join(' ');
    QStringList all;
    auto match = QRegularExpression(pattern).globalMatch(text);
    while (match.hasNext()) {
        all.append(match.next().captured(1).simplified());
    }
    return all;
}

/// What a page and its translation have in common: headings, list entries, table cells, pictures, links, code blocks.
QStringList skeleton(const char *path)
{
    static const QRegularExpression beginning("^(#+|-|[0-9]\\.|\\|) |^(```|!)");
    static const QRegularExpression target("\\]\\((?:\\.\\./)?([^)]*)\\)");
    QStringList bones;
    const QStringList lines = pageLines(path);
    for (const QString &line : lines) {
        const QString mark = beginning.match(line).captured(0).trimmed();
        if (!mark.isEmpty()) {
            bones.append(mark == "|" ? QString(line.count('|'), u'|') : mark);
        }
        auto links = target.globalMatch(line);
        while (links.hasNext()) {
            bones.append(links.next().captured(1));
        }
    }
    return bones;
}

/// The section macros of a manual page, and the subjects of its entries: options, files, variables.
QStringList entriesOfManual(const char *path)
{
    static const QRegularExpression subject("\\\\-\\\\-[a-z\\\\-]+|^\\.I .*|[A-Z_]{6,}");
    QStringList entries;
    bool isSubject = false;
    const QStringList lines = pageLines(path);
    for (const QString &line : lines) {
        if (isSubject || line.startsWith(".SH")) {
            entries.append(line.left(3) + (isSubject ? subject.match(line).captured(0) : QString()));
        }
        isSubject = line == ".TP";
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
        if (!QFile::exists(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm")) {
            QSKIP("Qt's own translations are not installed");
        }
        collectAllWindows(temporaryPath("english.csv"), m_english);
        Language::use("de");
        const QString link = temporaryPath("linked.so"); // as in a folder of the user's
        QVERIFY(QFile::link(PLUGIN, link));
        Language::useForPlugin(link);
        collectAllWindows(temporaryPath("german.csv"), m_german);
        for (const char *const expected :
             {"Aktualisieren", "Meldungen", "Tabelle exportieren", "Speichern", "Befehl"}) {
            QVERIFY2(m_german.found.contains(expected), expected);
        }
        QStringList left = (m_german.found & m_english.found).values();
        left.erase(std::remove_if(left.begin(), left.end(), isInternational), left.end());
        left.sort();
        QVERIFY2(left.isEmpty(), qPrintable(left.join('\n')));
        QCOMPARE(QLocale().toString(20000.5, 'f', 1), QString("20.000,5"));
    }

    void guideNamesWhatIsThere_data()
    {
        testRows<bool>({"isGerman"}, {{"user-guide.md", false}, {"de/user-guide.md", true}});
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
            static const QRegularExpression mark("&|\\.\\.\\.$|\u2026$|:$");
            shown.insert(text.remove(mark).trimmed());
        }
        const char *const page = QTest::currentDataTag();
        const QStringList names = foundIn(page, "\\*\\*([^*]+)\\*\\*");
        QVERIFY(names.size() > 15);
        QStringList unknown;
        for (const QString &name : names) {
            unknown += shown.contains(name) ? QStringList() : QStringList(name);
        }
        const QStringList keys = foundIn(page, "`((?:Ctrl|Alt|Shift|Strg|Umschalt)\\+[^`]+|F[0-9]+)`");
        QVERIFY(keys.size() > 20);
        for (const QString &key : keys) {
            if (!window.keys.contains(key) && key != "Alt+9") { // there is one container only
                unknown.append(key);
            }
        }
        QVERIFY2(unknown.isEmpty(), qPrintable(unknown.join('\n')));
    }

    void guidesSayTheSame()
    {
        QCOMPARE(skeleton("de/user-guide.md"), skeleton("user-guide.md"));
        for (const char *const page : {"user-guide.md", "de/user-guide.md"}) {
            const QDir folder = QFileInfo(QString(DOCUMENT_FOLDER "/") + page).dir();
            const QStringList targets = foundIn(page, "\\]\\(([^)#]+)[^)]*\\)");
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
        static const QRegularExpression pattern("\n  --([a-z-]+)");
        auto option = pattern.globalMatch(optionsHelp());
        QVERIFY(option.hasNext());
        while (option.hasNext()) {
            const QString name = option.next().captured(1).replace('-', "\\-");
            QVERIFY2(!english.filter(QString("\\-\\-") + name).isEmpty(), qPrintable(name));
        }
        QCOMPARE(entriesOfManual("../packaging/xy-plot-workbench.de.1.in"), english);
    }

private:
    Texts m_english;
    Texts m_german;
};

GUARDED_TEST(LanguagesTest)
#include "LanguagesTest.moc"
