#include "editor/app/CKeysDialog.h"

#include "editor/app/CKeyEdit.h"
#include "editor/app/KeyChords.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{

constexpr int COLUMN_KEY = 1;

QString GetText(const SKeyChord& key)
{
    return GetSequence(key).toString(QKeySequence::NativeText);
}

} // namespace

CKeysDialog::CKeysDialog(QWidget* pParent, const CKeyBindings& keys)
    : QDialog(pParent)
    , m_Keys(keys)
    , m_pList(new QTreeWidget(this))
    , m_pKey(new CKeyEdit(this, [this](SKeyChord key) { SetKey(key); }))
    , m_pClash(new QLabel(this))
    , m_pButtons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle("Keys");
    m_pList->setObjectName("keys-list");
    m_pKey->setObjectName("keys-edit");
    m_pClash->setObjectName("keys-clash");
    m_pClash->setStyleSheet("color: #d03030;");
    m_pList->setRootIsDecorated(false);
    m_pList->setHeaderLabels({"Command", "Key"});
    m_pList->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_pList->header()->setStretchLastSection(false);
    auto* pClear = new QPushButton("No key", this);
    auto* pDefaults = m_pButtons->addButton("Defaults", QDialogButtonBox::ResetRole);

    auto* pRow = new QHBoxLayout;
    pRow->addWidget(new QLabel("Press the key:", this));
    pRow->addWidget(m_pKey, 1);
    pRow->addWidget(pClear);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pList, 1);
    pLayout->addLayout(pRow);
    pLayout->addWidget(m_pClash);
    pLayout->addWidget(m_pButtons);
    resize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 32);

    connect(m_pList, &QTreeWidget::currentItemChanged, this, [this] { Choose(); });
    connect(pClear, &QPushButton::clicked, this, [this] { SetKey({}); });
    connect(pDefaults,
            &QPushButton::clicked,
            this,
            [this]
            {
                m_Keys.Reset();
                Fill();
            });
    connect(m_pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    Fill();
    m_pList->setCurrentItem(m_pList->topLevelItem(0));
}

void CKeysDialog::Fill()
{
    const int iCurrent = m_pList->indexOfTopLevelItem(m_pList->currentItem());
    m_pList->clear();
    for (const SKeyCommand& command : m_Keys.GetCommands())
    {
        new QTreeWidgetItem(m_pList,
                            {QString::fromStdString(command.strText), GetText(command.key)});
    }
    m_pList->setCurrentItem(m_pList->topLevelItem(iCurrent));
    ShowClash();
}

void CKeysDialog::Choose()
{
    const int iRow = m_pList->indexOfTopLevelItem(m_pList->currentItem());
    if (iRow < 0)
    {
        return;
    }
    m_pKey->Show(m_Keys.GetCommands()[static_cast<size_t>(iRow)].key);
}

void CKeysDialog::SetKey(const SKeyChord& key)
{
    const int iRow = m_pList->indexOfTopLevelItem(m_pList->currentItem());
    if (iRow < 0)
    {
        return;
    }
    const std::string strId = m_Keys.GetCommands()[static_cast<size_t>(iRow)].strId;
    m_Keys.Set(strId, key);
    m_pList->topLevelItem(iRow)->setText(COLUMN_KEY, GetText(key));
    m_pKey->Show(key);
    ShowClash();
}

void CKeysDialog::ShowClash()
{
    // One clash at a time: the next one shows when this one is gone.
    const auto clash = m_Keys.FindClash();
    for (int i = 0; i < m_pList->topLevelItemCount(); ++i)
    {
        const bool bClash = clash.has_value() && (static_cast<size_t>(i) == clash->first ||
                                                  static_cast<size_t>(i) == clash->second);
        m_pList->topLevelItem(i)->setForeground(
            COLUMN_KEY, bClash ? QBrush(QColor(0xD0, 0x30, 0x30)) : palette().text());
    }
    const auto& commands = m_Keys.GetCommands();
    m_pClash->setText(clash.has_value()
                          ? QString("%1 belongs to \"%2\" and to \"%3\".")
                                .arg(GetText(commands[clash->first].key),
                                     QString::fromStdString(commands[clash->first].strText),
                                     QString::fromStdString(commands[clash->second].strText))
                          : QString());
    m_pButtons->button(QDialogButtonBox::Ok)->setEnabled(!clash.has_value());
}
