#pragma once

#include <QDialog>

class CKeyBindings;

// All keys as they are now, to be read and copied; Edit > Keys changes them.
class CKeyListDialog : public QDialog
{
public:
    CKeyListDialog(QWidget* pParent, const CKeyBindings& keys); // read once
};
