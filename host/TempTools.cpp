#include "host/TempTools.h"

#include "host/KAROModuleInterface.h"
#include "host/Register.h"

TempTools::TempTools(int firstModule, int lastModule, CommandHandlerInterface *handler, QString name,
                     unsigned char readCommand, unsigned char writeCommand)
{
    Q_UNUSED(firstModule)
    Q_UNUSED(lastModule)
    Q_UNUSED(handler)
    Q_UNUSED(name)
    Q_UNUSED(readCommand)
    Q_UNUSED(writeCommand)
}

TempTools::~TempTools() = default;

bool TempTools::fillCurrentRegisterList(KAROModuleInterface *module, QList<int> kinds)
{
    m_registers.clear();
    if (module == nullptr) {
        return false;
    }
    const QList<Register *> registers = module->registers();
    for (Register *candidate : registers) {
        if (candidate != nullptr && kinds.contains(candidate->kind())) {
            m_registers.append(candidate);
        }
    }
    return !m_registers.isEmpty();
}

QList<Register *> TempTools::currentRegisterList() const
{
    QList<Register *> alive;
    for (const QPointer<Register> &entry : m_registers) {
        if (!entry.isNull()) {
            alive.append(entry.data());
        }
    }
    return alive;
}
