// One reader under a fuzzer that follows the coverage: storm_fuzz, with the reader's name in FUZZ_READER;
// bench/storm-fuzz runs it.

#include "Readers.h"

#include <QApplication>
#include <QFile>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{

const Reader *chosen = nullptr;

const Reader &chosenReader()
{
    const QByteArray name = qgetenv("FUZZ_READER");
    for (const Reader &reader : readers()) {
        if (name == reader.name) {
            return reader;
        }
        std::fprintf(stderr, "FUZZ_READER may be: %s\n", reader.name);
    }
    std::exit(2);
}

} // namespace

// NOLINTBEGIN(readability-identifier-naming): the fuzzer's names
extern "C" int LLVMFuzzerInitialize(int *argumentCount, char ***arguments)
{
    static const QApplication application(*argumentCount, *arguments);
    chosen = &chosenReader();
    QFile sample(QString::fromLocal8Bit(qgetenv("FUZZ_SAMPLE")));
    if (!sample.fileName().isEmpty() && sample.open(QIODevice::WriteOnly)) {
        sample.write(chosen->sample());
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString error = chosen->read(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    if (error.contains(QLatin1Char('\n'))) {
        std::fprintf(stderr, "more than one line: %s\n", qPrintable(error));
        std::abort();
    }
    return 0;
}
// NOLINTEND(readability-identifier-naming)
