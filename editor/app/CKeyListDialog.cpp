#include "editor/app/CKeyListDialog.h"

#include "editor/app/KeyChords.h"
#include "editor/core/CKeyBindings.h"
#include "editor/core/Words.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{

constexpr int LIST_WIDTH = 60; // characters
constexpr int LIST_HEIGHT = 36;

} // namespace

CKeyListDialog::CKeyListDialog(QWidget* pParent, const CKeyBindings& keys)
    : QDialog(pParent)
{
    setObjectName("key-list");
    setWindowTitle(Words("Keys"));
    auto* pList = new QTreeWidget(this);
    pList->setObjectName("key-list-rows");
    pList->setAccessibleName(Words("Keys and what they do"));
    pList->setRootIsDecorated(false);
    pList->setHeaderLabels({Words("Key"), Words("Does")});
    QString strText;
    for (const SKeyCommand& command : keys.GetCommands())
    {
        const QString strKey = GetSequence(command.key).toString(QKeySequence::NativeText);
        if (!strKey.isEmpty())
        {
            const QString strDoes = QString::fromStdString(command.strText);
            new QTreeWidgetItem(pList, {strKey, strDoes});
            strText += strKey + '\t' + strDoes + '\n';
        }
    }
    pList->resizeColumnToContents(0);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* pCopy = pButtons->addButton(Words("Copy"), QDialogButtonBox::ActionRole);
    pCopy->setObjectName("key-list-copy");
    pCopy->setToolTip(Words("All rows, as text with a tabulator between key and command"));
    connect(pCopy,
            &QPushButton::clicked,
            this,
            [strText] { QGuiApplication::clipboard()->setText(strText); });
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(pList, 1);
    pLayout->addWidget(pButtons);
    resize(fontMetrics().averageCharWidth() * LIST_WIDTH, fontMetrics().height() * LIST_HEIGHT);
}
