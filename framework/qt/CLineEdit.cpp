#include "framework/qt/CLineEdit.h"

#include <QKeyEvent>

namespace
{

// No exponent: fields show none, and its letter is a key of the program's as all others are. What
// is pasted may have one.
constexpr char NUMBER_KEYS[] = "0123456789+-.,";

constexpr double TINT = 0.25; // of the selection's colour in the ground of a marked text

QColor Mix(const QColor& ground, const QColor& other, double fShare)
{
    const auto mix = [fShare](int iGround, int iOther)
    {
        return static_cast<int>(iGround + (iOther - iGround) * fShare);
    };
    return {mix(ground.red(), other.red()),
            mix(ground.green(), other.green()),
            mix(ground.blue(), other.blue())};
}

} // namespace

void CLineEdit::SelectText(int iFrom, int iTo)
{
    if (iFrom < 0)
    {
        deselect();
        return;
    }
    const int iEnd = iTo < 0 ? static_cast<int>(text().size()) : iTo;
    setSelection(iFrom, iEnd - iFrom);
}

void CLineEdit::GetSelection(int& iFrom, int& iTo) const
{
    iFrom = hasSelectedText() ? selectionStart() : cursorPosition();
    iTo = hasSelectedText() ? selectionEnd() : iFrom;
}

void CLineEdit::MarkText(const char* pszWhy)
{
    const QString strWhy = QString::fromUtf8(pszWhy);
    if (strWhy == toolTip())
    {
        return;
    }
    setToolTip(strWhy); // comes before the tip that the form has for it
    QFont slanted;
    QPalette tinted; // what these two do not say is inherited
    if (!strWhy.isEmpty())
    {
        const QPalette usual = parentWidget()->palette();
        slanted.setItalic(true);
        tinted.setColor(QPalette::Base,
                        Mix(usual.color(QPalette::Base), usual.color(QPalette::Highlight), TINT));
    }
    setFont(slanted);
    setPalette(tinted);
}

bool CLineEdit::IsForeign(const QKeyEvent& event) const
{
    const QString strText = event.text();
    return m_bNumeric && !strText.isEmpty() && strText.front().isPrint() &&
           !QLatin1String(NUMBER_KEYS).contains(strText.front());
}

bool CLineEdit::event(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::ShortcutOverride && IsForeign(*static_cast<QKeyEvent*>(pEvent)))
    {
        pEvent->ignore();
        return true;
    }
    return QLineEdit::event(pEvent);
}

void CLineEdit::keyPressEvent(QKeyEvent* pEvent)
{
    if (IsForeign(*pEvent))
    {
        pEvent->ignore();
        return;
    }
    QLineEdit::keyPressEvent(pEvent);
}
