#include "editor/app/CProcessesDock.h"

#include "editor/core/CPluginRegistry.h"
#include "editor/core/Words.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{

constexpr int COLUMN_STATE = 1;

} // namespace

CProcessesDock::CProcessesDock(QWidget* pParent,
                               const CPluginRegistry& registry,
                               std::function<bool(size_t)> onRun)
    : QDockWidget(Words("Processes"), pParent)
    , m_Registry(registry)
    , m_OnRun(std::move(onRun))
{
    setObjectName("processes");
    auto* pGround = new QWidget(this);
    auto* pLayout = new QVBoxLayout(pGround);
    m_pList = new QTreeWidget(pGround);
    m_pList->setObjectName("process-list");
    m_pList->setAccessibleName(Words("Processes"));
    m_pList->setRootIsDecorated(false);
    m_pList->setHeaderLabels({Words("Process"), Words("State")});
    m_pList->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_pList->header()->setStretchLastSection(false);
    m_pButton = new QPushButton(Words("Run"), pGround);
    m_pButton->setObjectName("process-run");
    pLayout->addWidget(m_pList);
    pLayout->addWidget(m_pButton);
    setWidget(pGround);
    connect(m_pButton, &QPushButton::clicked, this, [this] { Run(); });
    connect(m_pList, &QTreeWidget::itemActivated, this, [this] { Run(); });
    Fill();
}

void CProcessesDock::Fill()
{
    m_pList->clear();
    for (size_t i = 0; i < m_Registry.GetProcessCount(); ++i)
    {
        const char* pszName = m_Registry.GetProcess(i)->GetName();
        new QTreeWidgetItem(m_pList, {QString::fromUtf8(pszName), Words("idle")});
    }
    m_pButton->setEnabled(m_Registry.GetProcessCount() > 0);
    if (m_Registry.GetProcessCount() > 0)
    {
        m_pList->setCurrentItem(m_pList->topLevelItem(0));
    }
}

void CProcessesDock::Run()
{
    const int iPlace = m_pList->indexOfTopLevelItem(m_pList->currentItem());
    if (iPlace < 0 || m_iRunning >= 0)
    {
        return;
    }
    // A process that reports its progress lets the window take events, also another click.
    m_iRunning = iPlace;
    m_pList->topLevelItem(iPlace)->setText(COLUMN_STATE, Words("running"));
    const bool bDone = m_OnRun(static_cast<size_t>(iPlace));
    m_pList->topLevelItem(iPlace)->setText(COLUMN_STATE, bDone ? Words("done") : Words("idle"));
    m_iRunning = -1;
}

void CProcessesDock::ShowProgress(float fDone)
{
    if (m_iRunning >= 0)
    {
        m_pList->topLevelItem(m_iRunning)
            ->setText(COLUMN_STATE, QString("%1 %").arg(static_cast<int>(fDone * 100.0F)));
    }
}
