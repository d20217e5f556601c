#include "host/ExportCSV.h"

#include "DelimitedText.h"
#include "host/AppSettings.h"
#include "host/ReplaceableFile.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIdentityProxyModel>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QStandardPaths>
#include <QTableView>

namespace
{

constexpr int narrowestPixels = 640;
constexpr int heightPixels = 420;
constexpr int rowMarginPixels = 4;

/// Without it spreadsheets decode the file in the encoding of the locale.
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

const QString &separatorKey()
{
    static const QString key = QStringLiteral("ExportCSV/Separator");
    return key;
}

const QString &decimalMarkKey()
{
    static const QString key = QStringLiteral("ExportCSV/DecimalMark");
    return key;
}

const QString &folderKey()
{
    static const QString key = QStringLiteral("ExportCSV/Folder");
    return key;
}

/// The table with both captions in its header: curves of different modules often have columns of the same name.
class CaptionedTable final : public QIdentityProxyModel
{
public:
    explicit CaptionedTable(QStandardItemModel *model, QObject *parent) : QIdentityProxyModel(parent)
    {
        setSourceModel(model);
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        // Numbers of one column can be compared by their length.
        return role == Qt::TextAlignmentRole ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter))
                                             : QIdentityProxyModel::data(index, role);
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        const auto *const model = qobject_cast<const QStandardItemModel *>(sourceModel());
        if (model == nullptr || orientation != Qt::Horizontal || role != Qt::DisplayRole) {
            return QIdentityProxyModel::headerData(section, orientation, role);
        }
        const QString module = DelimitedText::columnCaption(*model, section, ExportCSV::captionRole);
        const QString name = DelimitedText::columnCaption(*model, section, Qt::DisplayRole);
        return module.isEmpty() ? name : module + QLatin1Char('\n') + name;
    }
};

DelimitedFormat formatOf(const QComboBox *separatorBox, const QComboBox *decimalMarkBox)
{
    return {separatorBox->currentData().toChar(), decimalMarkBox->currentData().toChar()};
}

void selectRemembered(QComboBox *box, const QString &key)
{
    const QString remembered = AppSettings().value(key).toString();
    const int row = remembered.isEmpty() ? -1 : box->findData(remembered.at(0));
    box->setCurrentIndex(qMax(0, row));
}

} // namespace

ExportCSV::ExportCSV(QStandardItemModel *model, QWidget *parent, Qt::WindowFlags flags)
    : QWidget(parent, flags | Qt::Window), m_model(model)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Export table"));
    setWindowIcon(QIcon(QStringLiteral(":/SVG Icons/ExportData")));

    buildTable();
    m_outcome = new QLabel(this);
    m_outcome->setAccessibleName(tr("Outcome of the last copy or save"));
    m_outcome->setTextFormat(Qt::PlainText);
    m_outcome->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a long path must not widen the window

    auto *const layout = new QVBoxLayout(this);
    layout->addWidget(m_table, 1);
    layout->addLayout(makeControls());
    layout->addWidget(m_outcome);

    auto *const copyShortcut = new QShortcut(QKeySequence::Copy, this);
    connect(copyShortcut, SIGNAL(activated()), SLOT(copy()));
    auto *const closeShortcut = new QShortcut(QKeySequence::Cancel, this);
    connect(closeShortcut, SIGNAL(activated()), SLOT(close()));

    resize(narrowestPixels, heightPixels);
    m_table->setFocus();
    show();
    fitColumns();
    activateWindow(); // keys are for the table, not for the window that it was opened from
}

ExportCSV::~ExportCSV() = default;

QString ExportCSV::text() const
{
    return m_model.isNull() ? QString()
                            : DelimitedText::table(*m_model, captionRole, formatOf(m_separatorBox, m_decimalMarkBox));
}

void ExportCSV::copy()
{
    const QModelIndexList selected = m_table->selectionModel()->selectedIndexes();
    const QString copied =
        selected.isEmpty() ? text() : DelimitedText::cells(selected, formatOf(m_separatorBox, m_decimalMarkBox));
    if (copied.isEmpty()) {
        m_outcome->setText(tr("There is nothing to copy."));
        return;
    }
    QGuiApplication::clipboard()->setText(copied);
    m_outcome->setText(selected.isEmpty() ? tr("Copied the whole table.") : tr("Copied the selected cells."));
}

void ExportCSV::save()
{
    const QString standard = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    // Not QFileDialog::getSaveFileName(): this dialog is deleted with its window, and adds the suffix before it asks
    // whether to overwrite.
    auto *const dialog = new QFileDialog(this, tr("Save table"), AppSettings().value(folderKey(), standard).toString(),
                                         tr("Delimited text (*.csv);;All files (*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("csv"));
    dialog->selectFile(QStringLiteral("table.csv"));
    connect(dialog, SIGNAL(fileSelected(QString)), SLOT(saveTo(QString)));
    dialog->open();
}

void ExportCSV::saveTo(const QString &path)
{
    const QString saved = text();
    QString reason = obstacleToReplacing(path);
    if (saved.isEmpty()) {
        reason = tr("The table is empty.");
    } else if (reason.isEmpty()) {
        QSaveFile file(path);
        // commit() reports a failed write, too.
        if (file.open(QIODevice::WriteOnly)) {
            file.write(byteOrderMark);
            file.write(saved.toUtf8());
        }
        if (!file.isOpen() || !file.commit()) {
            reason = file.errorString();
        }
    }
    if (reason.isEmpty()) {
        AppSettings().setValue(folderKey(), QFileInfo(path).absolutePath());
        m_outcome->setText(tr("Saved as %1").arg(path));
        return;
    }
    m_outcome->setText(tr("Not saved."));
    auto *const message = new QMessageBox(QMessageBox::Warning, tr("Save table"),
                                          tr("The table was not saved as %1.").arg(path), QMessageBox::Ok, this);
    message->setAttribute(Qt::WA_DeleteOnClose);
    message->setTextFormat(Qt::PlainText);
    message->setInformativeText(reason);
    message->open();
}

void ExportCSV::rememberFormat()
{
    const DelimitedFormat format = formatOf(m_separatorBox, m_decimalMarkBox);
    AppSettings settings;
    settings.setValue(separatorKey(), QString(format.separator));
    settings.setValue(decimalMarkKey(), QString(format.decimalMark));
}

void ExportCSV::buildTable()
{
    m_table = new QTableView(this);
    m_table->setAccessibleName(tr("Table to export"));
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setModel(new CaptionedTable(m_model, this));
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + rowMarginPixels);
    m_table->resizeColumnsToContents();
}

void ExportCSV::fitColumns()
{
    // Measured when it is shown: headers and scroll bars take what their style needs.
    m_table->horizontalHeader()->setStretchLastSection(false);
    const int missing = m_table->horizontalHeader()->length() - m_table->viewport()->width();
    m_table->horizontalHeader()->setStretchLastSection(true); // no gap beside a narrow table
    const QScreen *const screen = QGuiApplication::primaryScreen();
    const int available = screen == nullptr ? QWIDGETSIZE_MAX : screen->availableSize().width() * 9 / 10;
    resize(qBound(narrowestPixels, width() + missing, qMax(narrowestPixels, available)), height());
}

QLayout *ExportCSV::makeControls()
{
    m_separatorBox = new QComboBox(this);
    m_separatorBox->setAccessibleName(tr("Separator"));
    m_separatorBox->addItem(tr("Semicolon"), QChar(QLatin1Char(';')));
    m_separatorBox->addItem(tr("Comma"), QChar(QLatin1Char(',')));
    m_separatorBox->addItem(tr("Tab"), QChar(QLatin1Char('\t')));
    selectRemembered(m_separatorBox, separatorKey());

    m_decimalMarkBox = new QComboBox(this);
    m_decimalMarkBox->setAccessibleName(tr("Decimal mark"));
    m_decimalMarkBox->addItem(tr("Point"), QChar(QLatin1Char('.')));
    m_decimalMarkBox->addItem(tr("Comma"), QChar(QLatin1Char(',')));
    selectRemembered(m_decimalMarkBox, decimalMarkKey());

    connect(m_separatorBox, SIGNAL(currentIndexChanged(int)), SLOT(rememberFormat()));
    connect(m_decimalMarkBox, SIGNAL(currentIndexChanged(int)), SLOT(rememberFormat()));

    auto *const separatorLabel = new QLabel(tr("S&eparator:"), this);
    separatorLabel->setBuddy(m_separatorBox);
    auto *const decimalMarkLabel = new QLabel(tr("&Decimal mark:"), this);
    decimalMarkLabel->setBuddy(m_decimalMarkBox);

    auto *const copyButton = new QPushButton(tr("&Copy"), this);
    copyButton->setToolTip(tr("Copies the selected cells, or the whole table when none is selected"));
    auto *const saveButton = new QPushButton(tr("&Save..."), this);
    auto *const closeButton = new QPushButton(tr("C&lose"), this);
    connect(copyButton, SIGNAL(clicked()), SLOT(copy()));
    connect(saveButton, SIGNAL(clicked()), SLOT(save()));
    connect(closeButton, SIGNAL(clicked()), SLOT(close()));

    auto *const layout = new QHBoxLayout;
    const QList<QWidget *> controls = {separatorLabel, m_separatorBox, decimalMarkLabel, m_decimalMarkBox};
    for (QWidget *control : controls) {
        layout->addWidget(control);
    }
    layout->addStretch();
    layout->addWidget(copyButton);
    layout->addWidget(saveButton);
    layout->addWidget(closeButton);
    return layout;
}
