#pragma once

#include <QDoubleSpinBox>

// A field for a number with fractions: shown and read with a point in every locale, and a comma
// that is typed becomes a point.
class CNumberBox : public QDoubleSpinBox
{
public:
    static constexpr double LONGEST = 1e7; // that dialogs take as a length

    explicit CNumberBox(QWidget* pParent);

    // For a line beside fields of lengths: up to where they take what is typed.
    static QString GetLimitText();

protected:
    QValidator::State validate(QString& strText, int& iCursor) const override;
};
