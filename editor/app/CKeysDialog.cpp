#include "editor/app/CKeysDialog.h"

#include "editor/app/CKeyEdit.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
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

CKeysDialog::CKeysDialog(QWidget* pParent, const CKeyBindings& keys, const SMouseBindings& mouse)
    : QDialog(pParent)
    , m_Keys(keys)
    , m_Mouse(mouse)
    , m_pList(new QTreeWidget(this))
    , m_pKey(new CKeyEdit(this, [this](SKeyChord key) { SetKey(key); }))
    , m_pFingers(new QCheckBox(
          Words("Two fingers on a touchpad move the view, with Ctrl they zoom"), this))
    , m_pClash(new QLabel(this))
    , m_pButtons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(Words("Keys"));
    m_pList->setObjectName("keys-list");
    m_pList->setAccessibleName(Words("Commands and their keys"));
    m_pKey->setObjectName("keys-edit");
    m_pKey->setAccessibleName(Words("Key of the command"));
    m_pClash->setObjectName("keys-clash");
    m_pClash->setStyleSheet("color: #d03030;");
    m_pList->setRootIsDecorated(false);
    m_pList->setHeaderLabels({Words("Command"), Words("Key")});
    m_pList->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_pList->header()->setStretchLastSection(false);
    auto* pClear = new QPushButton(Words("No key"), this);
    auto* pDefaults = m_pButtons->addButton(Words("Defaults"), QDialogButtonBox::ResetRole);

    auto* pRow = new QHBoxLayout;
    pRow->addWidget(new QLabel(Words("Press the key:"), this));
    pRow->addWidget(m_pKey, 1);
    pRow->addWidget(pClear);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(m_pList, 1);
    pLayout->addLayout(pRow);
    AddMouse(*pLayout);
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
                m_Mouse = {};
                ShowMouse();
                Fill();
            });
    connect(m_pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    ShowMouse();
    Fill();
    m_pList->setCurrentItem(m_pList->topLevelItem(0));
}

// What orbits, pans and zooms beside the right button, the middle one and the wheel.
void CKeysDialog::AddMouse(QVBoxLayout& layout)
{
    struct SRow
    {
        const char* pszLabel;
        const char* pszName;
        int SMouseBindings::*pChord;
    };

    constexpr SRow ROWS[] = {
        {TextKey("The right button orbits, and so does"), "mouse-orbit", &SMouseBindings::iOrbit},
        {TextKey("The middle button pans, and so does"), "mouse-pan", &SMouseBindings::iPan},
        {TextKey("The wheel zooms, and so does"), "mouse-zoom", &SMouseBindings::iZoom}};
    auto* pForm = new QFormLayout;
    for (size_t i = 0; i < m_MouseBoxes.size(); ++i)
    {
        auto* pBox = new QComboBox(this);
        pBox->setObjectName(ROWS[i].pszName);
        for (const SMouseChord& chord : SMouseBindings::CHORDS)
        {
            pBox->addItem(Words(chord.pszText));
        }
        connect(pBox,
                &QComboBox::currentIndexChanged,
                this,
                [this, pChord = ROWS[i].pChord](int iChord)
                {
                    m_Mouse.*pChord = iChord;
                    ShowClash();
                });
        m_MouseBoxes[i] = pBox;
        pForm->addRow(Words(ROWS[i].pszLabel), pBox);
    }
    m_pFingers->setObjectName("mouse-fingers");
    connect(m_pFingers, &QCheckBox::toggled, this, [this](bool bOn) { m_Mouse.bFingersPan = bOn; });
    pForm->addRow(m_pFingers);
    layout.addLayout(pForm);
}

void CKeysDialog::ShowMouse()
{
    const SMouseBindings mouse = m_Mouse; // boxes that change write to the other one
    m_MouseBoxes[0]->setCurrentIndex(mouse.iOrbit);
    m_MouseBoxes[1]->setCurrentIndex(mouse.iPan);
    m_MouseBoxes[2]->setCurrentIndex(mouse.iZoom);
    m_pFingers->setChecked(mouse.bFingersPan);
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
    m_pClash->setText(
        clash.has_value() ? QString(Words("%1 belongs to \"%2\" and to \"%3\"."))
                                .arg(GetText(commands[clash->first].key),
                                     QString::fromStdString(commands[clash->first].strText),
                                     QString::fromStdString(commands[clash->second].strText))
        : m_Mouse.HasClash() ? QString(Words("The mouse would do two things with the same button."))
                             : QString());
    m_pButtons->button(QDialogButtonBox::Ok)->setEnabled(!clash.has_value() && !m_Mouse.HasClash());
}
