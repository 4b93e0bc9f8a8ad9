#include "tests/tellur/panel/PanelFixture.h"

#include "tellur/panel/CTellurView.h"

CPanelFixture::CPanelFixture()
{
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(m_Folder.Path("config")));
    RegisterResourceModule(&GetPluginResources());
    Initialize();
}

CPanelFixture::~CPanelFixture()
{
    CloseView();
    UnregisterResourceModule(&GetPluginResources());
}

void CPanelFixture::OpenView()
{
    const CResourceScope scope(&GetPluginResources());
    m_View.reset(CTellurView::GetRuntimeClass().Create());
    ASSERT_TRUE(m_View->Create(nullptr));
    GetWidget(*m_View)->resize(360, 1000);
    m_View->ShowWindow(true);
    GetWidget(*m_View)->activateWindow();
    QApplication::processEvents();
    TakeCalls();
}

void CPanelFixture::CloseView()
{
    m_View.reset();
    QApplication::processEvents();
}

void CPanelFixture::Type(uint32_t uId, const char* pszText)
{
    Edit(uId)->setFocus();
    Edit(uId)->selectAll();
    QTest::keyClicks(Edit(uId), pszText);
}

void CPanelFixture::ClickSpin(uint32_t uId, bool bUp)
{
    QWidget* pSpin = Find(uId);
    QTest::mouseClick(
        pSpin, Qt::LeftButton, Qt::NoModifier, QPoint(3, bUp ? 2 : pSpin->height() - 2));
}

void CPanelFixture::Take(uint32_t uButton)
{
    Click(uButton);
    TakeCalls();
    m_Log.Clear();
}
