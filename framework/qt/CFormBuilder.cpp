#include "framework/qt/CFormBuilder.h"

#include "framework/qt/CFoldingGroup.h"
#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"
#include "framework/widgets/CFormWindow.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <map>

namespace
{

// Lengths as shares of the height of a line of text.
int GetShare(const QWidget& widget, double fShare)
{
    return static_cast<int>(std::lround(widget.fontMetrics().height() * fShare));
}

constexpr double MARGIN = 0.4;
constexpr double ROW_GAP = 0.3;
constexpr double CONTROL_GAP = 0.35;
constexpr double LINE_PADDING = 0.5; // above and below the text of a row
constexpr double EDIT_FRAME = 0.8;   // beside the characters of an edit, both sides

// What a control needs so that nothing of its content is cut.
int GetContentWidth(const SControlResource& control, const QWidget& widget)
{
    switch (control.eKind)
    {
    case EControlKind::OwnerDraw:
    case EControlKind::Space:
    case EControlKind::Edit:
    case EControlKind::ListView:
    case EControlKind::ListBox:
        // These scroll, or their owner draws them, so their content asks for no width.
        return widget.fontMetrics().height();
    case EControlKind::Spin:
        return widget.sizeHint().width();
    default:
        return widget.minimumSizeHint().width();
    }
}

// What has no text of its own is read out as the label before it, or as its group.
void NameControls(const QLayout& row, const QString& strGroup)
{
    QString strLabel = strGroup;
    for (int i = 0; i < row.count(); ++i)
    {
        QWidget* pWidget = row.itemAt(i)->widget();
        const auto* pLabel = qobject_cast<const QLabel*>(pWidget);
        const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget);
        if (pLabel != nullptr && !pLabel->text().isEmpty())
        {
            strLabel = pLabel->text();
        }
        else if (pWidget != nullptr && pWidget->accessibleName().isEmpty() &&
                 (pButton == nullptr || pButton->text().isEmpty()))
        {
            pWidget->setAccessibleName(strLabel);
        }
    }
}

} // namespace

CFormBuilder::CFormBuilder(CFormWindow& form, QWidget& ground)
    : m_Form(form)
    , m_Ground(ground)
{
}

void CFormBuilder::Build(const SDialogResource& dialog)
{
    auto* pColumns = new QHBoxLayout(&m_Ground); // the ground's
    const int iMargin = GetShare(m_Ground, MARGIN);
    pColumns->setContentsMargins(iMargin, iMargin, iMargin, iMargin);
    pColumns->setSpacing(iMargin);
    std::map<int, QVBoxLayout*> columns;
    for (const SGroupResource& group : dialog.groups)
    {
        // A column stands where the template names it first, whatever its number is.
        QVBoxLayout*& pColumn = columns[group.iColumn];
        if (pColumn == nullptr)
        {
            pColumn = new QVBoxLayout;
            pColumn->setSpacing(iMargin);
            pColumns->addLayout(pColumn, 1);
        }
        AddGroup(group, *pColumn);
    }
    for (const auto& [iColumn, pColumn] : columns)
    {
        // Where no group wants the spare height, or those that do are folded, it goes below the
        // last one.
        bool bFills = false;
        for (int i = 0; i < pColumn->count(); ++i)
        {
            bFills = bFills || pColumn->stretch(i) > 0;
        }
        pColumn->addStretch(bFills ? 0 : 1);
    }
    AlignLabels();
}

void CFormBuilder::AddGroup(const SGroupResource& group, QVBoxLayout& column)
{
    const bool bTitle = group.pszTitle != nullptr;
    auto* pFolding =
        bTitle ? new CFoldingGroup(QString::fromUtf8(group.pszTitle), &m_Ground) : nullptr;
    QWidget* pGround = bTitle ? pFolding->GetGround() : new QWidget(&m_Ground);
    auto* pRows = new QVBoxLayout(pGround);
    const int iMargin = bTitle ? GetShare(m_Ground, MARGIN) : 0;
    pRows->setContentsMargins(iMargin, iMargin, iMargin, iMargin);
    pRows->setSpacing(GetShare(m_Ground, ROW_GAP));
    int iWeight = 0;
    for (const SRowResource& row : group.rows)
    {
        AddRow(row, *pGround, *pRows);
        NameControls(*pRows->itemAt(pRows->count() - 1)->layout(), QString(group.pszTitle));
        iWeight += row.iWeight;
    }
    column.addWidget(bTitle ? pFolding : pGround, iWeight);
}

void CFormBuilder::AddRow(const SRowResource& row, QWidget& ground, QVBoxLayout& group)
{
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(GetShare(m_Ground, CONTROL_GAP));
    const int iHeight = row.iLines > 0 ? row.iLines * m_Ground.fontMetrics().height() +
                                             GetShare(ground, LINE_PADDING)
                                       : 0;
    bool bFirst = true;
    int iWeights = 0;
    for (const SControlResource& control : row.controls)
    {
        QWidget* pWidget = AddControl(control, ground, *pRow);
        iWeights += control.iWeight;
        if (iHeight > 0)
        {
            pWidget->setMinimumHeight(std::max(iHeight, pWidget->minimumSizeHint().height()));
            // A row with a share of the spare height grows beyond its lines, others are just as
            // high.
            const bool bGrows = row.iWeight > 0;
            pWidget->setMaximumHeight(bGrows ? QWIDGETSIZE_MAX : pWidget->minimumHeight());
        }
        if ((control.uStyle & CONTROL_SQUARE) != 0 && iHeight > 0)
        {
            pWidget->setFixedWidth(pWidget->minimumHeight());
        }
        if (row.iWeight > 0)
        {
            // As high as it has to be, and whatever there is beyond that.
            pWidget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        }
        auto* pLabel = qobject_cast<QLabel*>(pWidget);
        if (bFirst && pLabel != nullptr && row.controls.size() > 1)
        {
            m_FirstLabels.append(pLabel);
        }
        bFirst = false;
    }
    // Where no control wants the spare width, it goes behind the last one.
    if (iWeights == 0)
    {
        pRow->addStretch(1);
    }
    group.addLayout(pRow, row.iWeight);
}

QWidget* CFormBuilder::AddControl(const SControlResource& control, QWidget& ground, QBoxLayout& row)
{
    QWidget* pWidget = MakeControlWidget(control, &ground, &m_Form);
    SizeControl(control, *pWidget);
    row.addWidget(pWidget, control.iWeight);
    if (control.uId != 0)
    {
        m_Form.m_Items[control.uId] = CWindowNode::Find(pWidget);
    }
    return pWidget;
}

void CFormBuilder::SizeControl(const SControlResource& control, QWidget& widget) const
{
    const int iFrame = control.eKind == EControlKind::Edit ? GetShare(widget, EDIT_FRAME) : 0;
    const QFontMetrics metrics = widget.fontMetrics();
    // Digits are wider than letters on average, and an edit may hold nothing else.
    const int iCharacter =
        control.eKind == EControlKind::Edit
            ? std::max(metrics.averageCharWidth(), metrics.horizontalAdvance('0'))
            : metrics.averageCharWidth();
    const int iAsked = control.iWidth * iCharacter + iFrame;
    const int iWidth = std::max(iAsked, GetContentWidth(control, widget));
    widget.setMinimumWidth(iWidth);
    if (control.iWeight == 0)
    {
        widget.setMaximumWidth(iWidth);
    }
    else
    {
        widget.setSizePolicy(QSizePolicy::Expanding, widget.sizePolicy().verticalPolicy());
    }
    if (control.eKind == EControlKind::OwnerDraw)
    {
        widget.setMinimumHeight(widget.sizeHint().height()); // as a push button
    }
}

void CFormBuilder::AlignLabels()
{
    int iWidth = 0;
    for (const QLabel* pLabel : m_FirstLabels)
    {
        iWidth = std::max(iWidth, pLabel->minimumWidth());
    }
    for (QLabel* pLabel : m_FirstLabels)
    {
        pLabel->setFixedWidth(iWidth);
    }
}
