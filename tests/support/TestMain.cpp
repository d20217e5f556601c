// PROGRAM TEST_CLASS [FUNCTION or option of Qt's tests...]
// Runs one of the program's test classes. Each has a process of its own: what one leaves behind reaches no other.

#include "GuardedTest.h"

#include <cstdio>
#include <dlfcn.h>

int main(int argc, char **argv)
{
    const TestClassEntry *entry = TestClassEntry::first();
    while (entry != nullptr && (argc < 2 || qstrcmp(entry->name, argv[1]) != 0)) {
        entry = entry->next;
    }
    if (entry == nullptr) {
        std::fputs("expected one of these test classes:\n", stderr);
        for (entry = TestClassEntry::first(); entry != nullptr; entry = entry->next) {
            std::fprintf(stderr, "%s\n", entry->name);
        }
        return 2;
    }
    prepareTestEnvironment();
    // For leak checks: what a plugin keeps for the life of the process could not be reached once its file is unmapped.
    const QByteArray kept = qgetenv("TEST_KEEPS_MAPPED");
    if (!kept.isEmpty() && dlopen(kept.constData(), RTLD_LAZY) == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 2;
    }
    QApplication application(argc, argv);
    prepareTestApplication();
    QStringList arguments = QApplication::arguments();
    arguments.removeAt(1);
    const std::unique_ptr<QObject> test = entry->factory();
    return QTest::qExec(test.get(), arguments);
}
