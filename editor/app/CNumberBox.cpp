#include "editor/app/CNumberBox.h"

CNumberBox::CNumberBox(QWidget* pParent)
    : QDoubleSpinBox(pParent)
{
    setLocale(QLocale::c());
}

QValidator::State CNumberBox::validate(QString& strText, int& iCursor) const
{
    strText.replace(',', '.');
    return QDoubleSpinBox::validate(strText, iCursor);
}
