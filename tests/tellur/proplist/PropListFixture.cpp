#include "tests/tellur/proplist/PropListFixture.h"

#include "host/FileSystem.h"
#include "tests/support/TestPaths.h"

namespace
{

constexpr SControlResource CONTROLS[] = {
    {.uId = 21, .eKind = EControlKind::ListView, .iWidth = 60, .iWeight = 1},
    {.uId = 22, .eKind = EControlKind::Edit, .iWidth = 8}};
constexpr SRowResource ROWS[] = {{.controls = CONTROLS, .iLines = 40, .iWeight = 1}};
constexpr SGroupResource GROUPS[] = {{nullptr, ROWS}};
constexpr SDialogResource DIALOGS[] = {{21, "Properties", GROUPS}};

const SResourceModule& GetModule()
{
    static const SResourceModule s_Module = {.pszName = "properties", .dialogs = DIALOGS};
    return s_Module;
}

} // namespace

CPropListTest::CPropListTest()
    : m_Scope(&GetModule())
    , m_Form(21)
{
    RegisterResourceModule(&GetModule());
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(m_Folder.GetFolder()));
    fs::set_user_root(m_Folder.GetFolder().c_str());
    fs::set_data_root(TELLUR_SOURCE_DIR);
    m_User.onEdit = std::bind_front(&CPropListCtrl::HandleFieldEdit, &m_List);
    m_List.SetUser(&m_User);
    m_Form.Bind(GRID, m_List);
}

CPropListTest::~CPropListTest()
{
    fs::set_user_root(nullptr);
    fs::set_data_root(nullptr);
    UnregisterResourceModule(&GetModule());
}

void CPropListTest::Show(const PropObjects& objects, const char* pszEdit)
{
    if (!m_Form.IsWindow())
    {
        ASSERT_TRUE(m_Form.Create(nullptr));
        GetWidget(m_Form)->resize(640, 900);
        m_Form.ShowWindow(true);
        GetWidget(m_Form)->activateWindow();
        QApplication::processEvents();
    }
    m_List.SetObjects(objects);
    QApplication::processEvents();
    if (pszEdit != nullptr)
    {
        Edit(pszEdit);
    }
}

int CPropListTest::FindRow(const std::string& strName)
{
    const QAbstractItemModel& model = *View()->model();
    const QModelIndexList found = model.match(
        model.index(0, 0), Qt::DisplayRole, QString::fromStdString(strName), 1, Qt::MatchExactly);
    return found.empty() ? -1 : found.front().row();
}

QPoint CPropListTest::At(const std::string& strName, int iColumn)
{
    const QModelIndex cell = View()->model()->index(FindRow(strName), iColumn);
    View()->scrollTo(cell);
    return View()->visualRect(cell).center();
}

void CPropListTest::Edit(const std::string& strName)
{
    ASSERT_GE(FindRow(strName), 0) << strName;
    const QPoint at = At(strName);
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QApplication::processEvents();
}

void CPropListTest::Type(const char* pszText)
{
    auto* pEdit = Editor<QLineEdit>();
    ASSERT_NE(pEdit, nullptr);
    pEdit->selectAll();
    QTest::keyClicks(pEdit, pszText);
}
