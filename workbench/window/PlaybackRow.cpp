#include "window/PlaybackRow.h"

#include "modules/ModuleRack.h"
#include "modules/recording/RecordedModule.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDebug>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

namespace
{

constexpr int showIntervalMs = 250;
constexpr int pagesPerRecording = 10;

/// Minutes and seconds, for example "12:07.3".
QString timeText(qint64 step)
{
    constexpr qint64 msPerTenth = 100;
    constexpr qint64 tenthsPerMinute = 600;
    constexpr qint64 tenthsPerSecond = 10;
    const qint64 tenths = step * Playback::stepMs / msPerTenth;
    const qint64 inMinute = tenths % tenthsPerMinute;
    return QStringLiteral("%1:%2%3%4")
        .arg(tenths / tenthsPerMinute)
        .arg(inMinute / tenthsPerSecond, 2, 10, QLatin1Char('0'))
        .arg(QLocale().decimalPoint())
        .arg(inMinute % tenthsPerSecond);
}

QString speedText(int speedTenths)
{
    return QLocale().toString(speedTenths / 10.0, 'g', 4) + QStringLiteral(" \u00D7");
}

} // namespace

PlaybackRow::PlaybackRow(ModuleRack *rack, const AnswerWatch *watch, int index, const RecordingSettings &settings)
    : ModuleRow(rack, watch, index, tr("Recording: %1").arg(QFileInfo(settings.file).fileName()))
{
    m_play = new QPushButton;
    connect(m_play, &QPushButton::clicked, this, [this] {
        if (const RecordedModule *const played = module()) {
            const Playback &playback = played->playback();
            change(playback.speedTenths(), playback.isRepeated(), !playback.isPlaying());
        }
    });
    m_back = makeArrow(Qt::LeftArrow, tr("One row back"), -1);
    m_on = makeArrow(Qt::RightArrow, tr("One row on"), 1);
    m_close = new QPushButton(tr("Close"));
    m_close->setToolTip(tr("Take the recording out and forget it; its file stays"));
    m_close->setAccessibleName(tr("%1: close").arg(title()));
    connect(m_close, &QPushButton::clicked, this, [this] { this->rack()->remove(this->index()); });
    makeSpeedBox();
    m_repeat = makeBox(tr("Repeat"), tr("At its end the recording begins again"));
    connect(m_repeat, &QCheckBox::clicked, this, [this](bool on) {
        if (const RecordedModule *const played = module()) {
            change(played->playback().speedTenths(), on, played->playback().isPlaying());
        }
    });
    makeBesideBox();
    makeSlider();
    m_position = new QLabel;
    m_position->setWordWrap(true);
    m_notes = new QLabel;
    m_notes->setWordWrap(true);
    m_notes->setTextFormat(Qt::PlainText); // it shows texts of the file
    addControls();
    for (QWidget *const control : std::initializer_list<QWidget *>{m_slider, m_speed, m_beside}) {
        control->setFocusPolicy(Qt::StrongFocus); // not by the wheel
        control->installEventFilter(this);
    }
    connect(&m_timer, &QTimer::timeout, this, &PlaybackRow::showPosition);
    m_timer.start(showIntervalMs);
    PlaybackRow::refresh();
}

QToolButton *PlaybackRow::makeArrow(Qt::ArrowType arrow, const QString &text, int rows)
{
    auto *const button = new QToolButton;
    button->setArrowType(arrow);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAutoRepeat(true);
    button->setToolTip(text);
    button->setAccessibleName(QStringLiteral("%1: %2").arg(title(), text));
    connect(button, &QToolButton::clicked, this, [this, rows] {
        if (const RecordedModule *const played = module()) {
            setRow(played->row() + rows);
        }
    });
    return button;
}

void PlaybackRow::makeSpeedBox()
{
    m_speed = new QComboBox;
    m_speed->setToolTip(tr("Speed; 1 plays a row each time that containers sample, every 14 ms"));
    m_speed->setAccessibleName(tr("%1: speed").arg(title()));
    for (const int speedTenths : {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000}) {
        m_speed->addItem(speedText(speedTenths), speedTenths);
    }
    connect(m_speed, QOverload<int>::of(&QComboBox::activated), this, [this] {
        if (const RecordedModule *const played = module()) {
            const Playback &playback = played->playback();
            change(m_speed->currentData().toInt(), playback.isRepeated(), playback.isPlaying());
        }
    });
}

void PlaybackRow::makeBesideBox()
{
    m_beside = new QComboBox;
    m_beside->setAccessibleName(tr("%1: beside which module").arg(title()));
    m_beside->setToolTip(tr("Offers the values of another module, too, so that both can be in one plot. All sources "
                            "have to be chosen again then."));
    m_beside->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    fillBesideBox();
    connect(m_beside, QOverload<int>::of(&QComboBox::activated), this, &PlaybackRow::setBeside);
    connect(rack(), &ModuleRack::changed, this, &PlaybackRow::fillBesideBox); // one may have come
}

void PlaybackRow::fillBesideBox()
{
    const RecordingSettings *const settings = rack()->recording(index());
    if (settings == nullptr) {
        return; // about to be replaced by the row of another family
    }
    m_beside->clear();
    m_beside->addItem(tr("By itself"), QString());
    for (int other = 0; other < rack()->count(); ++other) {
        if (rack()->recording(other) == nullptr) {
            const QString key = rack()->settings(other).key;
            m_beside->addItem(tr("Beside %1").arg(key), key);
        }
    }
    if (m_beside->findData(settings->beside) < 0) {
        m_beside->addItem(tr("Beside %1").arg(settings->beside), settings->beside);
    }
    m_beside->setCurrentIndex(m_beside->findData(settings->beside));
}

void PlaybackRow::makeSlider()
{
    m_slider = new QSlider(Qt::Horizontal);
    m_slider->setToolTip(tr("Position. Arrow keys: a row; Page keys: a tenth; Home and End: first and last row"));
    m_slider->setAccessibleName(tr("%1: position").arg(title()));
    connect(m_slider, &QSlider::valueChanged, this, &PlaybackRow::setRow);
}

void PlaybackRow::addControls()
{
    auto *const buttons = new QHBoxLayout;
    buttons->addWidget(m_play, 1);
    buttons->addWidget(m_back);
    buttons->addWidget(m_on);
    controls()->addLayout(buttons, 0, 0, 1, 2);
    controls()->addWidget(m_slider, 1, 0, 1, 2);
    controls()->addWidget(m_position, 2, 0, 1, 2);
    controls()->addWidget(m_speed, 3, 0);
    controls()->addWidget(m_repeat, 3, 1);
    controls()->addWidget(m_beside, 4, 0, 1, 2);
    controls()->addWidget(m_notes, 5, 0, 1, 2);
    controls()->addWidget(m_close, 6, 0, 1, 2);
}

void PlaybackRow::refresh()
{
    ModuleRow::refresh();
    const RecordingSettings *const settings = rack()->recording(index());
    if (settings == nullptr) {
        return; // about to be replaced by the row of another family
    }
    if (m_speed->findData(settings->speedTenths) < 0) {
        m_speed->addItem(speedText(settings->speedTenths), settings->speedTenths);
    }
    m_speed->setCurrentIndex(m_speed->findData(settings->speedTenths));
    m_repeat->setChecked(settings->isRepeated);
    const RecordedModule *const played = module();
    for (QWidget *const control : std::initializer_list<QWidget *>{m_play, m_back, m_on, m_speed, m_repeat, m_slider}) {
        control->setEnabled(played != nullptr);
    }
    if (played != nullptr) {
        showFile(*played);
    }
    showPosition();
}

bool PlaybackRow::eventFilter(QObject *watched, QEvent *event)
{
    const auto *const control = qobject_cast<const QWidget *>(watched);
    if (event->type() == QEvent::Wheel && control != nullptr && !control->hasFocus()) {
        event->ignore();
        return true;
    }
    return ModuleRow::eventFilter(watched, event);
}

QString PlaybackRow::trouble() const
{
    const RecordedModule *const played = module();
    const QString ofFile = played == nullptr ? QString() : played->trouble();
    return ofFile.isEmpty() ? ModuleRow::trouble() : ofFile;
}

RecordedModule *PlaybackRow::module() const
{
    return rack()->moduleAs<RecordedModule>(index());
}

void PlaybackRow::change(int speedTenths, bool isRepeated, bool isPlaying)
{
    RecordingSettings settings;
    settings.speedTenths = speedTenths;
    settings.isRepeated = isRepeated;
    settings.isPlaying = isPlaying;
    rack()->setPlayback(index(), settings);
}

void PlaybackRow::setRow(int row)
{
    if (RecordedModule *const played = module()) {
        played->setRow(row);
        showPosition();
    }
}

void PlaybackRow::setBeside()
{
    ModuleSettings settings = rack()->settings(index());
    std::get<RecordingSettings>(settings.family).beside = m_beside->currentData().toString();
    const QString problem = rack()->replace(index(), settings); // by which this row is replaced
    if (!problem.isEmpty()) {
        qWarning().noquote() << problem;
        fillBesideBox();
    }
}

void PlaybackRow::showFile(const RecordedModule &module)
{
    const RecordingFile &file = module.file();
    const QSignalBlocker blocker(m_slider);
    m_slider->setRange(0, file.rowCount() - 1);
    m_slider->setPageStep(qMax(1, file.rowCount() / pagesPerRecording));
    m_notes->setText(file.notes().join(QLatin1Char('\n')));
    m_notes->setVisible(!file.notes().isEmpty());
    setToolTip(file.path());
}

void PlaybackRow::showPosition()
{
    RecordedModule *const played = module();
    const bool isPlaying = played != nullptr && played->playback().isPlaying();
    m_play->setText(isPlaying ? tr("Pause") : tr("Play"));
    m_play->setAccessibleName(QStringLiteral("%1: %2").arg(title(), m_play->text()));
    if (played == nullptr) {
        m_position->clear();
        return;
    }
    const Playback &playback = played->playback();
    m_play->setToolTip(isPlaying ? tr("Stay at this row") : tr("Go on from this row; at the end, from the first one"));
    const QLocale locale;
    const QString row =
        tr("Row %1 of %2").arg(locale.toString(played->row() + 1), locale.toString(played->file().rowCount()));
    const QString time = tr("%1 of %2").arg(timeText(playback.step()), timeText(playback.lastStep()));
    const QString position = row + QLatin1Char('\n') + time;
    m_position->setText(playback.isAtEnd() ? tr("%1, ended").arg(position) : position);
    if (!m_slider->isSliderDown()) {
        const QSignalBlocker blocker(m_slider);
        m_slider->setValue(played->row());
    }
}
