#include "editor/app/CNumberBox.h"

#include "editor/core/Words.h"

CNumberBox::CNumberBox(QWidget* pParent)
    : QDoubleSpinBox(pParent)
{
    setLocale(QLocale::c());
}

QString CNumberBox::GetLimitText()
{
    return QString(Words("up to %1 cm")).arg(LONGEST, 0, 'f', 0);
}

QValidator::State CNumberBox::validate(QString& strText, int& iCursor) const
{
    strText.replace(',', '.');
    return QDoubleSpinBox::validate(strText, iCursor);
}
