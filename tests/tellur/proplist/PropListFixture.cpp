#include "tests/tellur/proplist/PropListFixture.h"

#include "host/FileSystem.h"
#include "tests/support/TestPaths.h"

#include <QComboBox>

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

CEnumInfo MakeInfo(std::initializer_list<std::pair<int, const char*>> entries)
{
    CEnumInfo info;
    for (const auto& [iValue, pszName] : entries)
    {
        info.Add(iValue, pszName, "");
    }
    return info;
}

const CEnumInfo g_Kinds = MakeInfo({{1, "rock"}, {2, "sand"}, {3, "clay"}});
const CEnumInfo g_Bits = MakeInfo({{1, "wet"}, {2, "steep"}, {4, "high"}});

} // namespace

const CRTTI CTestShape::s_RTTI("CTestShape",
                               1,
                               nullptr,
                               nullptr,
                               CRTTI::FLAG_ABSTRACT,
                               [](CRTTI& rtti)
                               {
                                   rtti.RegisterField(
                                       new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CTestShape, m_Sides)),
                                       "m_Sides",
                                       "f:EDIT;e:EDIT;");
                               });
const CRTTI CTestBox::s_RTTI("CTestBox", 1, &CTestBox::Create, &CTestShape::s_RTTI, 0);
const CRTTI CTestBall::s_RTTI("CTestBall", 1, &CTestBall::Create, &CTestShape::s_RTTI, 0);
const CRTTI CTestThing::s_RTTI("CTestThing", 1, nullptr, nullptr, 0, &CTestThing::RegisterFields);

CRTTIObject* CTestBox::Create()
{
    return new CTestBox(77);
}

CRTTIObject* CTestBall::Create()
{
    return new CTestBall(78);
}

void CTestThing::RegisterFields(CRTTI& rtti)
{
    const auto add = [&rtti](CRTTIField* pField, const char* pszName, const char* pszFlags)
    {
        rtti.RegisterField(pField, pszName, pszFlags);
    };
    add(new CRTTIFieldFloat(RTTI_MEMBER_ADDRESS(CTestThing, m_Share)),
        "m_Share",
        "f:EDIT;e:EDIT|SPINNER;c:Numbers;d:how much;min:0;max:1;prec:2;");
    add(new CRTTIFieldFloat(RTTI_MEMBER_ADDRESS(CTestThing, m_Free)),
        "m_Free",
        "f:EDIT;e:EDIT|SPINNER;c:Numbers;");
    add(new CRTTIFieldBool(RTTI_MEMBER_ADDRESS(CTestThing, m_On)),
        "m_On",
        "f:EDIT;e:CHECKBOX;c:Choices;");
    add(new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CTestThing, m_Count)),
        "m_Count",
        "f:EDIT;e:EDIT|SPINNER;c:Numbers;step:2;");
    add(new CRTTIFieldEnum(RTTI_MEMBER_ADDRESS(CTestThing, m_Kind), &g_Kinds),
        "m_Kind",
        "f:EDIT;e:COMBO;c:Choices;");
    add(new CRTTIFieldFlags(RTTI_MEMBER_ADDRESS(CTestThing, m_Bits), &g_Bits),
        "m_Bits",
        "f:EDIT;c:Choices;");
    add(new CRTTIFieldVec3(RTTI_MEMBER_ADDRESS(CTestThing, m_Place)),
        "m_Place",
        "f:EDIT;e:EDIT|SPINNER;c:Space;");
    add(new CRTTIFieldVec3(RTTI_MEMBER_ADDRESS(CTestThing, m_Color)),
        "m_Color",
        "f:EDIT;e:EDIT|COLOR|SPINNER|NOMAINSPINNER;c:Space;");
    add(new CRTTIFieldMatrix(RTTI_MEMBER_ADDRESS(CTestThing, m_Frame)),
        "m_Frame",
        "f:EDIT;e:EDIT;c:Space;");
    add(new CRTTIFieldString(RTTI_MEMBER_ADDRESS(CTestThing, m_File)),
        "m_File",
        "f:EDIT;e:EDIT|FILE;c:Files;");
    add(new CRTTIFieldString(RTTI_MEMBER_ADDRESS(CTestThing, m_Folder)),
        "m_Folder",
        "f:EDIT;e:EDIT|FOLDER;c:Files;");
    add(new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CTestThing, m_Secret)),
        "m_Secret",
        "f:EDIT;e:EDIT|HIDDEN;");
    add(new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CTestThing, m_Fixed)),
        "m_Fixed",
        "f:READONLY;e:EDIT|DESCRIPTION;d:a fixed number;");
    add(new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CTestThing, m_Internal)), "m_Internal", "");
    add(new CRTTIFieldPointer(RTTI_MEMBER_ADDRESS(CTestThing, m_Shape), &CTestShape::s_RTTI),
        "m_Shape",
        "f:EDIT;e:BROWSE|DROP;");
    add(new CRTTIFieldPointerList(RTTI_MEMBER_ADDRESS(CTestThing, m_Shapes), &CTestShape::s_RTTI),
        "m_Shapes",
        "f:EDIT;e:BROWSE|DROP;");
}

bool CTestThing::AdoptObject(CRTTIField* pField, int iElement, CRTTIObject* pNew)
{
    if (pField->GetType() != RTTI_POINTER || iElement >= 0)
    {
        return false;
    }
    pOwn.reset(pNew);
    m_Shape = pNew;
    return true;
}

void CTestPropUser::SetFieldValue(CRTTIField* pField,
                                  const char* pszText,
                                  const PropObjects& objects)
{
    writes.push_back(std::string(pField->GetName()) + "=" + pszText + " x" +
                     std::to_string(objects.size()));
    HandleFieldEdit(objects, pField, pszText, -1);
}

bool CTestPropUser::HandleFieldEdit(const PropObjects& objects,
                                    CRTTIField* pField,
                                    const char* pszValue,
                                    int iElement)
{
    return pList->HandleFieldEdit(objects, pField, pszValue, iElement);
}

CPropListTest::CPropListTest()
    : m_Scope(&GetModule())
    , m_Form(21)
{
    RegisterResourceModule(&GetModule());
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(m_Folder.GetFolder()));
    fs::set_user_root(m_Folder.GetFolder().c_str());
    fs::set_data_root(TELLUR_SOURCE_DIR);
    m_User.pList = &m_List;
    m_User.host.GetEngine().AddObject(11, &m_Box);
    m_User.host.GetEngine().AddObject(12, &m_Ball);
    m_List.SetUser(&m_User);
    m_Form.Bind(GRID, m_List);
}

CPropListTest::~CPropListTest()
{
    fs::set_user_root(nullptr);
    fs::set_data_root(nullptr);
    UnregisterResourceModule(&GetModule());
}

void CPropListTest::Show(const PropObjects& objects)
{
    if (!m_Form.IsWindow())
    {
        ASSERT_TRUE(m_Form.Create(nullptr));
        GetWidget(m_Form)->resize(640, 900);
        m_Form.ShowWindow(true);
        m_Form.GetParent();
        GetWidget(m_Form)->activateWindow();
        QApplication::processEvents();
    }
    m_List.SetObjects(objects);
    QApplication::processEvents();
}

int CPropListTest::FindRow(const std::string& strName)
{
    for (int i = 0; i < m_List.GetItemCount(); ++i)
    {
        if (m_List.GetCellText(i, 0) == strName)
        {
            return i;
        }
    }
    return -1;
}

std::string CPropListTest::Value(const std::string& strName)
{
    const int iRow = FindRow(strName);
    return iRow >= 0 ? m_List.GetCellText(iRow, 1) : "no such row";
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

void CPropListTest::Choose(const char* pszText)
{
    auto* pCombo = Editor<QComboBox>();
    ASSERT_NE(pCombo, nullptr);
    ASSERT_GE(pCombo->findText(pszText), 0) << pszText;
    pCombo->setFocus();
    while (pCombo->currentText() != pszText) // a choice may change what else there is
    {
        const bool bDown = pCombo->currentIndex() < pCombo->findText(pszText);
        QTest::keyClick(pCombo, bDown ? Qt::Key_Down : Qt::Key_Up);
        pCombo = Editor<QComboBox>();
        ASSERT_NE(pCombo, nullptr);
    }
}
