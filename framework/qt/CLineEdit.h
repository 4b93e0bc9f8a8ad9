#pragma once

#include "framework/widgets/ControlNodes.h"

#include <QLineEdit>

class QKeyEvent;

// The one line of an edit. One that holds a number takes no key that is part of none: such a key is
// the program's, also as a shortcut, while the keyboard is here. A text that is marked is slanted
// on a tinted ground. Owned by the widget it stands on.
class CLineEdit : public QLineEdit, public IEditNode
{
public:
    using QLineEdit::QLineEdit;

    // IEditNode
    void SetLimit(int nMost) override { setMaxLength(nMost); }

    void SetLocked(bool bLocked) override { setReadOnly(bLocked); }

    bool IsLocked() const override { return isReadOnly(); }

    void SelectText(int iFrom, int iTo) override;
    void GetSelection(int& iFrom, int& iTo) const override;

    void SetNumeric(bool bNumeric) override { m_bNumeric = bNumeric; }

    void MarkText(const char* pszWhy) override;

protected:
    bool event(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    bool IsForeign(const QKeyEvent& event) const;

    bool m_bNumeric = false;
};
