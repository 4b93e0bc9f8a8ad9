#pragma once

#include "host/HostTypes.h"
#include "tellur/modification/CVertList.h"

#include <cstdint>

class IHeightRows;
class ITellurBitmap;
class Terrain;

// Whether one of nCount heights is below 0: a vertex that nobody edits.
bool HasNegative(const float* pHeights, size_t nCount);

// The working set of one operation point: the grid vertices under a brush footprint with their
// heights and weights. A candidate becomes a vertex of the set when SetData finds an editable
// height for it. Owned by the function that runs the operation point; Initialize may be called
// again and again and reuses the memory.
class CVertDataSet
{
public:
    virtual ~CVertDataSet() = default;

    // Makes every grid vertex inside the box (terrain units, inclusive) a candidate. pTerrain:
    // borrowed. The box must lie on the terrain; nothing is clipped here. False without a terrain,
    // with one logged line.
    bool Initialize(Terrain* pTerrain, const SExtents& box);

    bool IsInitialized() const { return m_Initialized; }

    // Empties the set, as newly constructed but with its memory kept.
    void Reset();

    // Gives candidates their heights from a row-major buffer and moves those with a height of 0 or
    // more to the vertex list, at its end. The others stay candidates for the next call. False, and
    // nothing happens, when there is no memory for them; without a buffer one line says so.
    bool SetData(const float* pBuffer, int iBufferSizeX, int iBufferSizeZ);
    // Does the same with heights that are given by rows; null counts as no buffer.
    bool SetRows(const IHeightRows* pRows, int iBufferSizeX, int iBufferSizeZ);

    // Sets every weight from the brush shape: the image stretched over the square of side fExtent
    // around the centre, sampled bilinearly; a sample of at least 0.0001 gets fHardness added and
    // is clamped to 0..1; times fPower.
    void GetDataFromBitmap(
        const SVec3& center, float fExtent, ITellurBitmap* pBitmap, float fPower, float fHardness);

    CVertList& GetVerts() { return m_Verts; }

    const CVertList& GetVerts() const { return m_Verts; }

    size_t GetCandidateCount() const;

    // The bounding box of a list. A missing list (one logged line) or an empty one gives -1 in all
    // six values. Kept as it always was: no maximum is below 0 and no minimum above 1000000.
    static SExtents& GetExtentsFromVerts(SExtents& extents, const CVertList* pVerts);
    static SExtents GetStartExtents();
    static void Widen(SExtents& extents, const SVec3& point);

private:
    struct SCandidates // vertices of one row
    {
        int ixFirst;
        int iz;
        int nCount;
    };

    void FillVertsList(const SExtents& box);
    void MoveEditable(const SCandidates& row, const float* pHeights);
    void BuildColumnTable(float fCenterX, float fExtent, int iWidth);
    void SetAllWeights(float fWeight);

    Terrain* m_Terrain = nullptr;
    bool m_Initialized = false;
    std::vector<SCandidates> m_Candidates;
    CVertList m_Verts;

    // Scratch of SetData and GetDataFromBitmap, kept for the next operation point.
    std::vector<SCandidates> m_Left;
    std::vector<float> m_Row;
    std::vector<int> m_Columns; // left pixel of each grid column's pair, right pixel follows
    std::vector<float> m_ColumnWeights; // weight of the left one
    std::vector<float> m_BlendedRow;    // two image rows blended for one grid row
    int m_FirstColumn = 0;              // grid column that the tables start with
};
