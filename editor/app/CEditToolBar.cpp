#include "editor/app/CEditToolBar.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CEditor.h"
#include "editor/app/CNumberBox.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace
{

constexpr double POWER_STEP = 0.05;
constexpr int POWER_DECIMALS = 2;
constexpr int SIZE_DECIMALS = 1;

QString GetKey(const CKeyBindings& keys, const char* pszId)
{
    const SKeyCommand* pCommand = keys.FindById(pszId);
    return pCommand != nullptr ? GetSequence(pCommand->key).toString(QKeySequence::NativeText)
                               : QString();
}

} // namespace

CEditToolBar::CEditToolBar(QWidget* pParent, CEditor& editor, CViewArea& views)
    : QToolBar(Words("Tools"), pParent)
    , m_Host(editor.GetHost())
    , m_pTools(editor.FindInterface<IPluginTools>())
    , m_Editor(editor)
    , m_Views(views)
{
    setObjectName("editor-toolbar");
    setToolButtonStyle(Qt::ToolButtonTextOnly);
}

void CEditToolBar::Fill(const CCommandList& commands,
                        const std::vector<std::string>& tools,
                        QMenu* pView,
                        QMenu* pMaterials)
{
    for (const std::string& strId : tools)
    {
        addAction(commands.Find(strId.c_str()));
    }
    addSeparator();
    m_pSize = AddNumber("brush-size", Words("Size"), EBrushValue::Extent);
    m_pSize->setDecimals(SIZE_DECIMALS);
    m_pSize->setRange(0.0, CNumberBox::LONGEST);
    m_pSize->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_pPower = AddNumber("brush-power", Words("Power"), EBrushValue::Power);
    m_pPower->setDecimals(POWER_DECIMALS);
    m_pPower->setRange(0.0, 1.0);
    m_pPower->setSingleStep(POWER_STEP);
    addSeparator();
    addAction(commands.Find("edit.undo"));
    addAction(commands.Find("edit.redo"));
    addSeparator();
    AddMenu("views-button",
            Words("Views"),
            Words("Views and windows, as the View menu has them"),
            pView);
    AddMenu("material-button",
            Words("Material"),
            Words("What the ground looks like while it is sculpted"),
            pMaterials);
}

CNumberBox* CEditToolBar::AddNumber(const char* pszName, const char* pszLabel, EBrushValue eValue)
{
    auto* pLabel = new QLabel(QString(" %1 ").arg(pszLabel), this);
    auto* pBox = new CNumberBox(this);
    pBox->setObjectName(pszName);
    pBox->setAccessibleName(QString(Words("%1 of the brush")).arg(pszLabel));
    pBox->setKeyboardTracking(false);      // a number counts once it is whole
    pBox->setFocusPolicy(Qt::StrongFocus); // the wheel alone takes no keyboard
    pBox->installEventFilter(this);
    // As wide as a large level asks for, and not as the largest number.
    pBox->setFixedWidth(pBox->fontMetrics().horizontalAdvance("888888.8") +
                        pBox->sizeHint().height() * 3 / 2);
    connect(pBox,
            &QDoubleSpinBox::valueChanged,
            this,
            [this, eValue](double fValue) { SetNumber(eValue, fValue); });
    addWidget(pLabel);
    addWidget(pBox);
    return pBox;
}

void CEditToolBar::AddMenu(const char* pszName,
                           const char* pszText,
                           const QString& strTip,
                           QMenu* pMenu)
{
    if (pMenu == nullptr)
    {
        return;
    }
    auto* pButton = new QToolButton(this);
    pButton->setObjectName(pszName);
    pButton->setText(pszText);
    pButton->setToolTip(strTip);
    pButton->setMenu(pMenu);
    pButton->setPopupMode(QToolButton::InstantPopup);
    pButton->setToolButtonStyle(Qt::ToolButtonTextOnly);
    addWidget(pButton);
}

// As the keys: nothing during a stroke, whose brush is that of the press.
void CEditToolBar::SetNumber(EBrushValue eValue, double fValue)
{
    if (m_pTools != nullptr && !m_Host.GetInput().IsDragging())
    {
        m_pTools->SetBrushValue(eValue, static_cast<float>(fValue));
        m_Views.RepeatHover();
        m_Views.RequestFrames();
    }
    Follow();
}

void CEditToolBar::FollowNumber(CNumberBox& box, EBrushValue eValue)
{
    // A size of 0 can be typed elsewhere; the brush is there all the same.
    const bool bBrush = m_pTools != nullptr && m_Editor.GetDocument().HasLevel() &&
                        !m_pTools->GetFunctionName().empty() &&
                        (eValue == EBrushValue::Extent || !m_pTools->IsPainting());
    const double fValue = bBrush ? static_cast<double>(m_pTools->GetBrushValue(eValue)) : 0.0;
    box.setEnabled(bBrush);
    const double fHalfStep = 0.5 * std::pow(10.0, -box.decimals());
    if (std::fabs(box.value() - fValue) > fHalfStep)
    {
        const QSignalBlocker quiet(box);
        box.setValue(fValue);
    }
}

void CEditToolBar::Follow()
{
    if (m_pSize == nullptr)
    {
        return;
    }
    FollowNumber(*m_pSize, EBrushValue::Extent);
    FollowNumber(*m_pPower, EBrushValue::Power);
    ShowKeys();
}

void CEditToolBar::ShowKeys()
{
    const CKeyBindings& keys = m_Editor.GetKeys();
    // What has no key is left out.
    const auto way = [&keys](const char* pszCommand, const QString& strText)
    {
        const QString strKey = GetKey(keys, pszCommand);
        return strKey.isEmpty() ? QString() : strKey + strText;
    };
    const auto describe = [](const QString& strWhat, QStringList ways)
    {
        ways.removeAll(QString());
        return ways.isEmpty() ? strWhat : strWhat + " (" + ways.join(", ") + ")";
    };
    m_pSize->setToolTip(describe(Words("Size of the brush, terrain units"),
                                 {way("brush.larger", Words(" larger")),
                                  way("brush.smaller", Words(" smaller")),
                                  way("brush.hold_size", Words(" held with the mouse"))}));
    m_pPower->setToolTip(describe(Words("Power of the brush, 0 to 1"),
                                  {way("brush.hold_power", Words(" held with the mouse"))}));
}

void CEditToolBar::LeaveFields()
{
    m_Views.activateWindow(); // the bar may float
    m_Views.GetActive()->setFocus();
}

bool CEditToolBar::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    auto* pBox = static_cast<CNumberBox*>(pWatched);
    if (pEvent->type() == QEvent::Wheel && !pBox->hasFocus())
    {
        pEvent->ignore();
        return true;
    }
    const bool bKey =
        pEvent->type() == QEvent::ShortcutOverride || pEvent->type() == QEvent::KeyPress;
    const int iKey = bKey ? static_cast<QKeyEvent*>(pEvent)->key() : 0;
    const bool bEnter = iKey == Qt::Key_Return || iKey == Qt::Key_Enter;
    if (!bEnter && iKey != Qt::Key_Escape)
    {
        return QToolBar::eventFilter(pWatched, pEvent);
    }
    if (pEvent->type() == QEvent::ShortcutOverride)
    {
        pEvent->accept(); // a field that is left by it ends no other work
        return true;
    }
    if (bEnter)
    {
        pBox->interpretText();
    }
    else
    {
        const QSignalBlocker quiet(*pBox);
        pBox->setValue(pBox->value()); // what was typed is dropped
        pBox->findChild<QLineEdit*>()->setText(pBox->textFromValue(pBox->value()));
    }
    LeaveFields();
    return true;
}
