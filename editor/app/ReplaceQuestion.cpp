#include "editor/app/ReplaceQuestion.h"

#include "editor/core/Words.h"

#include <QMessageBox>
#include <QPushButton>

EReplaceAnswer AskToReplace(QWidget* pParent, const std::vector<SReplacedFile>& files)
{
    if (files.empty())
    {
        return EReplaceAnswer::Replace;
    }
    QString strText = Words("Saving would replace");
    for (const SReplacedFile& file : files)
    {
        strText +=
            "\n\n" + QString::fromStdString(file.strPath) +
            (file.bOwn ? Words("\nchanged by another program since it was opened or saved here")
                       : Words("\nanother file, which is there already"));
    }
    QMessageBox box(
        QMessageBox::Warning, Words("Save level"), strText, QMessageBox::NoButton, pParent);
    box.setTextFormat(Qt::PlainText);
    const QAbstractButton* pReplace =
        box.addButton(Words("Overwrite"), QMessageBox::DestructiveRole);
    const QAbstractButton* pElsewhere = box.addButton(Words("Save as..."), QMessageBox::ActionRole);
    // The return key alone must not replace anything.
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    box.exec();
    if (box.clickedButton() == pReplace)
    {
        return EReplaceAnswer::Replace;
    }
    return box.clickedButton() == pElsewhere ? EReplaceAnswer::Elsewhere : EReplaceAnswer::Cancel;
}
