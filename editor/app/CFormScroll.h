#pragma once

#include <QScrollArea>

class QDialog;

// What a dialog has above its buttons, scrolled where the screen is too small for it. Wants as much
// room as its content. Owned by its parent.
class CFormScroll : public QScrollArea
{
public:
    // pContent: taken.
    CFormScroll(QWidget* pParent, QWidget* pContent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

// Gives a dialog the size that it wants, as far as its screen has it; one that is shown only grows.
void FitDialogToScreen(QDialog& dialog);
