#include "framework/qt/CWidgetFrontEnd.h"

#include "framework/core/CMenu.h"
#include "framework/core/Resources.h"
#include "framework/drawing/ColorRef.h"
#include "framework/qt/CWindowNode.h"
#include "framework/qt/WidgetAccess.h"

#include <QApplication>
#include <QColorDialog>
#include <QCursor>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPixmap>
#include <QScreen>

#include <cmath>

namespace
{

std::vector<QPointer<QWidget>>& GetViews()
{
    // Never destroyed: widgets may outlive static objects.
    static std::vector<QPointer<QWidget>>& s_Views = *new std::vector<QPointer<QWidget>>;
    return s_Views;
}

Qt::KeyboardModifier GetModifier(EKey eKey)
{
    switch (eKey)
    {
    case EKey::Control:
        return Qt::ControlModifier;
    case EKey::Alt:
        return Qt::AltModifier;
    default:
        return Qt::ShiftModifier;
    }
}

void FillMenu(QMenu& shown, const CMenu& menu)
{
    for (size_t i = 0; i < menu.GetItemCount(); ++i)
    {
        const QString strText = QString::fromStdString(menu.GetItemText(i));
        if (menu.IsSeparator(i))
        {
            shown.addSeparator();
        }
        else if (const CMenu* pSubMenu = menu.GetSubMenu(i))
        {
            FillMenu(*shown.addMenu(strText), *pSubMenu);
        }
        else
        {
            shown.addAction(strText)->setData(menu.GetItemId(i));
        }
    }
}

} // namespace

struct CWidgetFrontEnd::SImpl
{
    QPointer<QWidget> pCapture;
};

QWidget* GetWidget(const CWindow& window)
{
    const CWindowNode* pNode = CWindowNode::GetOf(window);
    return pNode != nullptr ? pNode->GetWidget() : nullptr;
}

uintptr_t RegisterView(QWidget& view)
{
    std::erase_if(GetViews(), [](const QPointer<QWidget>& pView) { return pView == nullptr; });
    GetViews().emplace_back(&view);
    return CWindowNode::Make(view, EControlKind::Space, 0, nullptr)->GetHandle();
}

QCursor MakeCursor(const SCursorResource* pCursor, double fScale)
{
    if (pCursor == nullptr)
    {
        return {Qt::ArrowCursor};
    }
    const SPictureResource& picture = pCursor->picture;
    const bool bDouble = fScale > 1.0 && picture.pPngDouble != nullptr;
    QPixmap pixmap;
    pixmap.loadFromData(bDouble ? picture.pPngDouble : picture.pPng,
                        static_cast<uint>(bDouble ? picture.nBytesDouble : picture.nBytes));
    pixmap.setDevicePixelRatio(bDouble ? 2.0 : 1.0);
    return QCursor(pixmap, pCursor->iHotX, pCursor->iHotY);
}

CWidgetFrontEnd::CWidgetFrontEnd()
    : m_Impl(std::make_unique<SImpl>())
{
}

CWidgetFrontEnd::~CWidgetFrontEnd() = default;

bool CWidgetFrontEnd::IsKeyDown(EKey eKey) const
{
    return QGuiApplication::queryKeyboardModifiers().testFlag(GetModifier(eKey));
}

SScreenPoint CWidgetFrontEnd::GetCursorPos() const
{
    const QPoint point = QCursor::pos();
    return {point.x(), point.y()};
}

void CWidgetFrontEnd::SetCursorPos(SScreenPoint point)
{
    QCursor::setPos(point.x, point.y);
}

SScreenPoint CWidgetFrontEnd::GetScreenSize() const
{
    const QScreen* pScreen = QGuiApplication::screenAt(QCursor::pos());
    pScreen = pScreen != nullptr ? pScreen : QGuiApplication::primaryScreen();
    const QSize size = pScreen != nullptr ? pScreen->size() : QSize();
    return {size.width(), size.height()};
}

void CWidgetFrontEnd::SetCursor(const SCursorResource* pCursor)
{
    for (const QPointer<QWidget>& pView : GetViews())
    {
        if (pView != nullptr)
        {
            pView->setCursor(MakeCursor(pCursor, pView->devicePixelRatioF()));
        }
    }
}

void CWidgetFrontEnd::SetCapture(uintptr_t uWindow)
{
    ReleaseCapture();
    // Without such a window nobody has the mouse, as after a release.
    QWidget* pWidget = CWindowNode::FindWidget(uWindow);
    if (pWidget != nullptr)
    {
        m_Impl->pCapture = pWidget;
        pWidget->grabMouse();
    }
}

void CWidgetFrontEnd::ReleaseCapture()
{
    if (m_Impl->pCapture != nullptr)
    {
        m_Impl->pCapture->releaseMouse();
        m_Impl->pCapture.clear();
    }
}

EMessageBoxAnswer CWidgetFrontEnd::MessageBox(const char* pszText, uint32_t uFlags)
{
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(QGuiApplication::applicationDisplayName());
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromUtf8(pszText));
    const uint32_t uIcon = uFlags & (MB_ICONQUESTION | MB_ICONEXCLAMATION);
    box.setIcon(uIcon == MB_ICONEXCLAMATION
                    ? QMessageBox::Warning
                    : (uIcon == MB_ICONQUESTION ? QMessageBox::Question : QMessageBox::NoIcon));
    const QString strDetail = QString::fromStdString(GetFaultDetail());
    if (uIcon == MB_ICONEXCLAMATION && !strDetail.contains(box.text())) // not the same twice
    {
        box.setInformativeText(strDetail);
    }
    const bool bQuestion = (uFlags & MB_YESNO) != 0;
    box.setStandardButtons(bQuestion ? QMessageBox::Yes | QMessageBox::No
                                     : QMessageBox::StandardButtons(QMessageBox::Ok));
    switch (box.exec())
    {
    case QMessageBox::Ok:
        return EMessageBoxAnswer::Ok;
    case QMessageBox::Yes:
        return EMessageBoxAnswer::Yes;
    case QMessageBox::No:
        return EMessageBoxAnswer::No;
    default:
        return EMessageBoxAnswer::Cancel;
    }
}

bool CWidgetFrontEnd::ChooseColor(uint32_t& uColor)
{
    // The toolkit's own chooser: it is the same on every desktop.
    const QColor chosen =
        QColorDialog::getColor(QColor(GetRed(uColor), GetGreen(uColor), GetBlue(uColor)),
                               QApplication::activeWindow(),
                               QString(),
                               QColorDialog::DontUseNativeDialog);
    if (!chosen.isValid())
    {
        return false;
    }
    uColor = MakeColor(static_cast<uint8_t>(chosen.red()),
                       static_cast<uint8_t>(chosen.green()),
                       static_cast<uint8_t>(chosen.blue()));
    return true;
}

bool CWidgetFrontEnd::ChooseFolder(std::string& strFolder)
{
    const QString strChosen = QFileDialog::getExistingDirectory(
        QApplication::activeWindow(),
        QString(),
        QString::fromStdString(strFolder),
        QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    if (strChosen.isEmpty())
    {
        return false;
    }
    strFolder = strChosen.toStdString();
    return true;
}

uint32_t CWidgetFrontEnd::TrackPopupMenu(const CMenu& menu, SScreenPoint point)
{
    QMenu shown(QApplication::activeWindow());
    FillMenu(shown, menu);
    const QAction* pChosen = shown.exec(QPoint(point.x, point.y));
    return pChosen != nullptr ? pChosen->data().toUInt() : 0;
}
