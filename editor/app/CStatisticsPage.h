#pragma once

#include <QWidget>

class CTerrain;
class QFormLayout;

// What the ground of a level is like, in numbers and with its heights as a small picture. Measured
// when the page is first shown.
class CStatisticsPage : public QWidget
{
public:
    // terrain: borrowed, as it stays while the page is there.
    CStatisticsPage(QWidget* pParent, const CTerrain& terrain);

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    void AddRow(const char* pszLabel, const char* pszName, const QString& strText);

    const CTerrain& m_Terrain;
    QFormLayout* m_pForm; // the page's
};
