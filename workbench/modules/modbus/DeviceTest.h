#pragma once

#include "modules/modbus/DeviceSettings.h"
#include "modules/modbus/ModbusValue.h"
#include "modules/modbus/RegisterMapReader.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class ModbusConnection;

/**
 * One attempt to read a value of a device, and what came of it in words.
 *
 * Reads the first value of the register map; without a sound map it reads holding register 0, which shows that the
 * unit answers, be it with an exception. Looks at the connection from time to time and never waits for it. GUI thread.
 */
class DeviceTest : public QObject
{
    Q_OBJECT

public:
    static constexpr int lookIntervalMs = 50;
    static constexpr int patienceMs = 3000; ///< for trouble that may pass, such as no answer

    explicit DeviceTest(const DeviceSettings &settings, QObject *parent = nullptr);
    ~DeviceTest() override;

    /// Begins; finished() comes later, never from within this call.
    void start();

signals:
    /// \a words are one or two sentences.
    void finished(bool isAnswered, const QString &words);

private:
    void look();
    void finish(bool isAnswered, const QString &words);
    QString answerWords(int exception, const quint16 *words) const;

    const DeviceSettings m_settings;
    const RegisterMapResult m_map;
    RegisterSpan m_span;
    std::shared_ptr<ModbusConnection> m_connection; // while it runs
    int m_use = 0;                                  // of the device, by this test
    qint64 m_startNs = 0;                           // of the monotonic clock
    QElapsedTimer m_clock;
    QTimer m_timer;
};
