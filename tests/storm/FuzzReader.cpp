// One reader under a fuzzer that follows the coverage: storm_fuzz, with the reader's name in FUZZ_READER;
// bench/storm-fuzz runs it.

#include "Readers.h"

#include <QCoreApplication>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{

const Reader *chosenReader()
{
    const QByteArray name = qgetenv("FUZZ_READER");
    for (const Reader &reader : readers()) {
        if (name == reader.name) {
            return &reader;
        }
        std::fprintf(stderr, "FUZZ_READER may be: %s\n", reader.name);
    }
    std::exit(2);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data,
                                      std::size_t size) // NOLINT(readability-identifier-naming)
{
    static const Reader *const reader = chosenReader();
    const QString error = reader->read(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    if (error.contains(QLatin1Char('\n'))) {
        std::fprintf(stderr, "more than one line: %s\n", qPrintable(error));
        std::abort();
    }
    return 0;
}
