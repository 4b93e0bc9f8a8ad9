#include "editor/app/CImportDialog.h"

#include "editor/app/CFormScroll.h"
#include "editor/app/CImportForm.h"
#include "editor/app/CImportPicture.h"
#include "editor/app/CImportSource.h"
#include "editor/app/ImportWords.h"
#include "editor/core/Words.h"
#include "engine/elevation/ImportPicture.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

#include <utility>

namespace
{

constexpr int ASSUMED_LINES = 5; // seen at once

// A copy, since the engine's picture goes.
QImage MakeImage(const SReliefPicture& picture, double fScale)
{
    QImage image = QImage(picture.rgb.data(),
                          static_cast<int>(picture.uWidth),
                          static_cast<int>(picture.uHeight),
                          static_cast<qsizetype>(picture.uWidth) * 3,
                          QImage::Format_RGB888)
                       .copy();
    image.setDevicePixelRatio(fScale);
    return image;
}

} // namespace

CImportDialog::CImportDialog(QWidget* pParent,
                             CImportSource& source,
                             bool bLevel,
                             std::function<QString()> lastFault)
    : QDialog(pParent)
    , m_Source(source)
    , m_LastFault(std::move(lastFault))
{
    setWindowTitle(Words("Import ") + QString::fromStdString(source.GetName()));
    auto* pContent = new QWidget(this);
    auto* pSides = new QHBoxLayout(pContent);
    pSides->setContentsMargins(0, 0, 0, 0);
    pSides->addWidget(MakeFileSide(), 1);
    pSides->addWidget(MakeLevelSide(bLevel));
    m_pFault = new QLabel(this);
    m_pFault->setObjectName("import-fault");
    m_pFault->setTextFormat(Qt::PlainText);
    m_pFault->setWordWrap(true);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_pOk = pButtons->button(QDialogButtonBox::Ok);
    m_pOk->setText(Words("&Import"));
    connect(pButtons, &QDialogButtonBox::accepted, this, &CImportDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(new CFormScroll(this, pContent), 1);
    pLayout->addWidget(m_pFault);
    pLayout->addWidget(pButtons);
    m_pForm->setFocus();
    Update();
    FitDialogToScreen(*this);
}

QWidget* CImportDialog::MakeFileSide()
{
    auto* pSide = new QWidget(this);
    m_pPicture = new CImportPicture(pSide);
    m_pLook = new QComboBox(pSide);
    m_pLook->setObjectName("import-look");
    m_pLook->addItem(Words("shaded"), true);
    m_pLook->addItem(Words("heights as grey"), false);
    m_pLook->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_pLook->setMinimumContentsLength(6); // it grows where there is room
    connect(m_pLook, &QComboBox::currentIndexChanged, this, [this] { Update(); });
    auto* pFile =
        new QGroupBox(m_Source.IsSet() ? Words("The files, together") : Words("The file"), pSide);
    m_pFileWords = new QFormLayout(pFile);
    m_pFileWords->addRow(Words("Picture"), m_pLook);
    auto* pLayout = new QVBoxLayout(pSide);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pPicture, 1);
    pLayout->addWidget(pFile);
    return pSide;
}

QWidget* CImportDialog::MakeLevelSide(bool bLevel)
{
    auto* pSide = new QWidget(this);
    m_pForm = new CImportForm(
        pSide, m_Source, bLevel, [this] { Update(); }, [this] { ReadAgain(); });
    auto* pResult = new QGroupBox(Words("The level"), pSide);
    m_pLevelWords = new QFormLayout(pResult);
    m_pAssumed = new QPlainTextEdit(pResult);
    m_pAssumed->setObjectName("import-assumed");
    m_pAssumed->setAccessibleName(Words("What is assumed"));
    m_pAssumed->setReadOnly(true);
    m_pAssumed->setTabChangesFocus(true);
    m_pAssumed->setMinimumHeight(ASSUMED_LINES * fontMetrics().lineSpacing());
    auto* pLayout = new QVBoxLayout(pSide);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pForm);
    pLayout->addWidget(pResult);
    pLayout->addWidget(m_pAssumed, 1);
    return pSide;
}

SImportOptions CImportDialog::GetOptions() const
{
    return m_pForm->GetOptions();
}

EImportAs CImportDialog::GetTarget() const
{
    return m_pForm->GetTarget();
}

void CImportDialog::accept()
{
    if (m_bPossible)
    {
        QDialog::accept();
    }
}

void CImportDialog::ReadAgain()
{
    m_Source.Read(m_pForm->GetOptions()); // a fault is shown in place of the picture
    Update();
}

void CImportDialog::Update()
{
    if (m_pOk == nullptr)
    {
        return; // still being made
    }
    SImportPlan plan;
    std::string strFault;
    if (!m_Source.IsRead())
    {
        ShowFault(m_LastFault());
    }
    else if (!PlanImport(
                 m_Source.GetInfo(), m_Source.GetReport(), m_pForm->GetOptions(), plan, strFault))
    {
        ShowFault(QString::fromStdString(Words("It cannot be imported: ") + strFault + "."));
        ShowFile();
    }
    else
    {
        ShowFault({});
        ShowPlan(plan);
    }
}

void CImportDialog::ShowPlan(const SImportPlan& plan)
{
    ShowWords(DescribeFile(m_Source), *m_pFileWords);
    ShowWords(DescribeLevel(m_Source, plan), *m_pLevelWords);
    m_pAssumed->setPlainText(ListAssumptions(m_Source, plan).join('\n'));
    DrawPlan(plan, DescribeCorners(m_Source, m_pForm->GetOptions().orientation, plan));
}

// What can be seen of a file whose measures are still to be told.
void CImportDialog::ShowFile()
{
    ShowWords(DescribeFile(m_Source), *m_pFileWords);
    SImportOptions options = m_pForm->GetOptions();
    options.eSpacing = ESpacing::FromFile;
    SImportPlan plan;
    std::string strFault;
    if (PlanImport(m_Source.GetInfo(), m_Source.GetReport(), options, plan, strFault))
    {
        QStringList names = DescribeCorners(m_Source, options.orientation, plan);
        DrawPlan(plan, names.replaceInStrings(QRegularExpression("^.*\n"), ""));
    }
}

void CImportDialog::DrawPlan(const SImportPlan& plan, const QStringList& corners)
{
    const double fScale = devicePixelRatioF();
    const auto uPixels = static_cast<uint32_t>(m_pPicture->sizeHint().width() * fScale);
    SReliefPicture picture;
    const bool bDrawn = DrawImport(m_Source.GetThin(),
                                   m_pForm->GetOptions().orientation,
                                   plan,
                                   uPixels,
                                   m_pLook->currentData().toBool(),
                                   picture);
    m_pPicture->Show(bDrawn ? MakeImage(picture, fScale) : QImage(), corners);
}

void CImportDialog::ShowWords(const QList<SImportWord>& words, QFormLayout& form)
{
    for (const SImportWord& word : words)
    {
        const QString strName = QString("import-word-%1").arg(word.pszName);
        auto* pText = findChild<QLabel*>(strName);
        if (pText == nullptr)
        {
            pText = new QLabel(this);
            pText->setObjectName(strName);
            pText->setTextFormat(Qt::PlainText);
            pText->setWordWrap(true); // where the screen is narrow
            pText->setTextInteractionFlags(Qt::TextSelectableByMouse);
            form.addRow(word.pszLabel, pText);
        }
        pText->setText(word.strText);
    }
}

void CImportDialog::ShowFault(const QString& strFault)
{
    m_bPossible = strFault.isEmpty();
    m_pOk->setEnabled(m_bPossible);
    m_pFault->setText(strFault);
    m_pFault->setVisible(!m_bPossible);
    if (m_bPossible)
    {
        return;
    }
    // What was true of other choices is gone; what still is comes back.
    m_pPicture->Show({}, {});
    m_pAssumed->clear();
    for (QLabel* pText : findChildren<QLabel*>(QRegularExpression("^import-word-")))
    {
        pText->clear();
    }
}
