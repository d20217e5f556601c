#include "SelectorPage.h"

#include "host/ComboBox.h"

#include <QHash>
#include <QLayout>
#include <QTableView>

namespace
{

template<typename Widget> Widget *partAt(const QLayout *layout, int position)
{
    QLayoutItem *const item = layout->itemAt(position);
    return item == nullptr ? nullptr : qobject_cast<Widget *>(item->widget());
}

QString suffixOf(QString partName)
{
    for (const char *const word : {"cmbm", "motor", "cmds", "dockWidgetContents"}) {
        partName.remove(QLatin1String(word));
    }
    return partName;
}

} // namespace

SelectorPage::SelectorPage(const QWidget *part) : m_suffix(part == nullptr ? QString() : suffixOf(part->objectName()))
{
    QWidget *const frame = part == nullptr ? nullptr : part->parentWidget();
    const QLayout *const layout = frame == nullptr ? nullptr : frame->layout();
    if (layout == nullptr) {
        return;
    }
    m_frame = frame;
    m_moduleBox = partAt<ComboBox>(layout, 0);
    m_motorBox = partAt<ComboBox>(layout, 1);
    m_table = partAt<QTableView>(layout, 2);
}

bool SelectorPage::isValid() const
{
    return m_moduleBox != nullptr && m_motorBox != nullptr && m_table != nullptr;
}

QString SelectorPage::suffix() const
{
    return m_suffix;
}

int SelectorPage::curve() const
{
    return m_suffix.leftRef(1).toInt();
}

bool SelectorPage::isX() const
{
    return m_suffix.endsWith(QLatin1Char('X'));
}

bool SelectorPage::isY() const
{
    return m_suffix.endsWith(QLatin1Char('Y'));
}

QWidget *SelectorPage::frame() const
{
    return m_frame;
}

ComboBox *SelectorPage::moduleBox() const
{
    return m_moduleBox;
}

ComboBox *SelectorPage::motorBox() const
{
    return m_motorBox;
}

QTableView *SelectorPage::table() const
{
    return m_table;
}

QString SelectorPage::currentModuleKey() const
{
    return m_moduleBox->currentData().toList().value(0).toString();
}

QString SelectorPage::rememberedRowKey() const
{
    const uint choice = qHash(m_moduleBox->currentText() + m_motorBox->currentText(), 0);
    return QStringLiteral("Table/%1/%2").arg(m_frame->objectName()).arg(choice);
}
