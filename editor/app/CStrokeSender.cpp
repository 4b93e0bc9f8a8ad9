#include "editor/app/CStrokeSender.h"

#include "editor/core/CEditorHost.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "framework/core/KeyState.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr float SAME_SHARE = 1e-5F; // of the terrain: places that are one

int32_t GetPixel(float fPosition)
{
    return static_cast<int32_t>(std::floor(fPosition));
}

float GetMiddle(uint32_t uHalf)
{
    return static_cast<float>(static_cast<int16_t>(uHalf & 0xFFFFU)) + 0.5F;
}

float GetSame(const SVec3& size)
{
    return SAME_SHARE * std::max(size.x, size.z);
}

bool IsSame(const SVec3& a, const SVec3& b, float fSame)
{
    return std::fabs(a.x - b.x) <= fSame && std::fabs(a.z - b.z) <= fSame;
}

} // namespace

CStrokeSender::CStrokeSender(CEditorHost& host, ViewId view, SHandState& hand)
    : m_Host(host)
    , m_View(view)
    , m_Hand(hand)
{
}

const CTerrain* CStrokeSender::GetTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}

// Between vertices this is smooth, and the same at mirrored places of mirrored ground. The
// triangles that a ray hits are not: their diagonals all lead the same way.
float CStrokeSender::GetHeight(const SVec3& place) const
{
    return m_Host.GetEngine().GetCWorld().GetTerrainHeight(place.x, place.z);
}

void CStrokeSender::Begin(const SSymmetry& symmetry, EStrokeImages eImages)
{
    m_Symmetry = symmetry;
    m_eImages = eImages;
    m_nPlaces = symmetry.GetImageCount() + 1;
    m_Sent.clear();
    m_Places.clear();
}

// Known before it is sent: from within the call the plug-in picks the ground there.
void CStrokeSender::Await(float fX, float fY, const SVec3* pGround)
{
    m_SentX = fX;
    m_SentY = fY;
    m_pGround = pGround;
    m_Told = {};
    TakeKeys();
}

// Not after the event, which may take long enough for a key to be let go meanwhile.
void CStrokeSender::TakeKeys()
{
    m_ToldKeys = {true, IsKeyDown(EKey::Control), IsKeyDown(EKey::Alt)};
}

void CStrokeSender::Press(float fX, float fY, uint32_t uFlags, const SVec3* pGround)
{
    m_Flags = uFlags;
    m_Sent.clear();
    m_Places.clear();
    Await(fX, fY, pGround);
    m_Host.GetInput().SetPointForm(m_Form);
    m_Host.GetInput().SendButtonDown(
        m_View, uFlags | MOUSE_LEFT, {GetPixel(fX), GetPixel(fY), 0, 0});
    m_pGround = nullptr;
    Note(EEvent::Press, {});
}

void CStrokeSender::SendMove(float fX, float fY, uint32_t uFlags, const SStrokePoint& point)
{
    m_Host.GetInput().SendMouseMove(m_View,
                                    uFlags | MOUSE_LEFT,
                                    {GetPixel(fX), GetPixel(fY)},
                                    {point.iWheel, MOUSE_BUTTON_LEFT},
                                    {point.iStepX, point.iStepY});
}

void CStrokeSender::Move(const SStrokePoint& point, uint32_t uFlags)
{
    m_Flags = uFlags;
    const float fAbove = GetAbove(point.hit); // the ground is another one afterwards
    Await(point.fX, point.fY, nullptr);
    m_Host.GetInput().SetPointForm(m_Form);
    SendMove(point.fX, point.fY, uFlags, point);
    Note(EEvent::Move, point);
    if (point.bHit)
    {
        SendImages(point.hit, fAbove, uFlags);
    }
}

void CStrokeSender::MoveTo(const SVec3& ground, uint32_t uFlags)
{
    m_Flags = uFlags;
    const float fAbove = GetAbove(ground);
    Await(m_SentX, m_SentY, &ground);
    m_Host.GetInput().SetPointForm(m_Form);
    SendMove(m_SentX, m_SentY, uFlags, {});
    m_pGround = nullptr;
    Note(EEvent::Move, {});
    SendImages(ground, fAbove, uFlags);
}

void CStrokeSender::Release(float fX, float fY, uint32_t uFlags, const SVec3* pGround)
{
    m_Flags = uFlags;
    Await(fX, fY, pGround);
    m_Host.GetInput().SendButtonUp(m_View, uFlags, {GetPixel(fX), GetPixel(fY), 0, 0});
    m_pGround = nullptr;
    NoteRelease();
}

void CStrokeSender::Hover(float fX, float fY, uint32_t uFlags)
{
    Await(fX, fY, nullptr);
    m_Host.GetInput().SendMouseMove(m_View, uFlags, {GetPixel(fX), GetPixel(fY)}, {0, 0}, {0, 0});
}

size_t CStrokeSender::FindImages(const CTerrain* pTerrain,
                                 const SSymmetry& symmetry,
                                 const SVec3& point,
                                 std::array<SImage, SSymmetry::MOST_IMAGES>& images)
{
    size_t nFound = 0;
    const size_t nCount = pTerrain != nullptr ? symmetry.GetImageCount() : 0;
    for (size_t i = 0; i < nCount; ++i)
    {
        const SVec3 size = pTerrain->GetSize();
        SVec3 image = symmetry.GetImage(i, point, size);
        const float fSame = GetSame(size);
        const auto isSame = [&](const SImage& other)
        {
            return IsSame(image, other.at, fSame);
        };
        // On a line of the mirror, or at the centre, a point is its own image.
        const bool bNew = !IsSame(image, point, fSame) &&
                          std::none_of(images.begin(),
                                       images.begin() + static_cast<std::ptrdiff_t>(nFound),
                                       isSame);
        if (bNew && pTerrain->PickDown(image))
        {
            images[nFound++] = {image, i};
        }
    }
    return nFound;
}

void CStrokeSender::SendImages(const SVec3& point, float fAbove, uint32_t uFlags)
{
    if (m_eImages != EStrokeImages::Moves || !m_Symmetry.IsOn())
    {
        return;
    }
    std::array<SImage, SSymmetry::MOST_IMAGES> images;
    const size_t nCount = FindImages(GetTerrain(), m_Symmetry, point, images);
    const bool bBefore = std::exchange(m_Hand.bElsewhere, true);
    // A drag that has found no memory on the way is over.
    for (size_t i = 0; i < nCount && m_Host.GetInput().IsDragging(); ++i)
    {
        images[i].at.y = GetHeight(images[i].at) + fAbove;
        m_Host.GetInput().SetPointForm(m_Symmetry.TurnForm(images[i].i, m_Form));
        m_pGround = &images[i].at;
        SendMove(m_SentX, m_SentY, uFlags, {});
        m_pGround = nullptr;
    }
    m_Hand.bElsewhere = bBefore;
}

bool CStrokeSender::HasAnswer(bool& bHit, SVec3& hit) const
{
    bHit = m_pGround != nullptr;
    if (bHit)
    {
        hit = *m_pGround;
    }
    return bHit || m_bNothing;
}

void CStrokeSender::FindPosition(ViewPoint point, float& fX, float& fY) const
{
    // Events have whole pixels. Where the last one was inside its pixel is known here.
    const bool bLast = point == CModeManager::PackPoint(GetPixel(m_SentX), GetPixel(m_SentY));
    fX = bLast ? m_SentX : GetMiddle(point);
    fY = bLast ? m_SentY : GetMiddle(point >> 16U);
}

// Before the plug-in does its work with it: the ground at the images is that of before, too.
void CStrokeSender::NoteHit(const SVec3* pHit)
{
    const CTerrain* pTerrain = GetTerrain();
    m_Told = {};
    TakeKeys(); // those of the event, for as long as it lasts
    if (!HasOwnDrags() || pTerrain == nullptr || pHit == nullptr)
    {
        return;
    }
    const SVec3 hit = *pHit;
    m_Told[0] = {true, hit};
    m_ToldAbove = GetAbove(hit);
    for (size_t i = 1; i < m_nPlaces; ++i)
    {
        SPlace& place = m_Told[i];
        place.at = m_Symmetry.GetImage(i - 1, hit, pTerrain->GetSize());
        place.bThere = pTerrain->PickDown(place.at);
        place.at.y = GetHeight(place.at) + m_ToldAbove;
    }
}

void CStrokeSender::Note(EEvent eEvent, const SStrokePoint& point)
{
    if (!HasOwnDrags())
    {
        return;
    }
    m_Sent.push_back(
        {eEvent, {point.iStepX, point.iStepY}, point.iWheel, m_Form, m_ToldAbove, m_ToldKeys});
    m_Places.insert(
        m_Places.end(), m_Told.begin(), m_Told.begin() + static_cast<std::ptrdiff_t>(m_nPlaces));
}

const CStrokeSender::SPlace& CStrokeSender::GetPlace(size_t iEvent, size_t iImage) const
{
    return m_Places[iEvent * m_nPlaces + iImage];
}

// Whether the image goes the very way of the hand or of an image before it.
bool CStrokeSender::IsDouble(size_t iImage) const
{
    const CTerrain* pTerrain = GetTerrain();
    const float fSame = pTerrain != nullptr ? GetSame(pTerrain->GetSize()) : 0.0F;
    for (size_t iOther = 0; iOther < iImage; ++iOther)
    {
        bool bSame = true;
        for (size_t i = 0; i < m_Sent.size() && bSame; ++i)
        {
            const SPlace& a = GetPlace(i, iImage);
            const SPlace& b = GetPlace(i, iOther);
            bSame = a.bThere == b.bThere && (!a.bThere || IsSame(a.at, b.at, fSame));
        }
        if (bSame)
        {
            return true;
        }
    }
    return false;
}

void CStrokeSender::PlayImages()
{
    if (!HasOwnDrags() || m_Sent.empty())
    {
        return;
    }
    const bool bOpen = m_Host.GetHistory().IsStepOpen();
    const bool bBefore = std::exchange(m_Hand.bElsewhere, true);
    for (size_t i = 1; i < m_nPlaces; ++i)
    {
        // A drag that was dropped for want of memory has taken the whole step back.
        if (!IsDouble(i) && m_Host.GetHistory().IsStepOpen() == bOpen)
        {
            PlayImage(i);
        }
    }
    m_Sent.clear();
    m_Places.clear();
    m_Hand.played = {};
    m_Hand.bElsewhere = bBefore;
}

// The event that the drag of an image begins with; as many as there are when it has none.
size_t CStrokeSender::FindBegin(size_t iImage) const
{
    const size_t nEnd = m_Sent.size();
    const bool bEnds = m_eImages == EStrokeImages::Ends;
    for (size_t i = 0; i < nEnd; ++i)
    {
        const bool bThere = GetPlace(i, iImage).bThere;
        if (bThere && !bEnds)
        {
            // Beside the ground a brush would go on from its stroke before.
            return m_Sent[i].eEvent != EEvent::Release ? i : nEnd;
        }
        if (bEnds && GetPlace(i, 0).bThere) // where the tool has begun
        {
            const bool bTo = !GetPlace(nEnd - 1, 0).bThere || GetPlace(nEnd - 1, iImage).bThere;
            return bThere && bTo ? 0 : nEnd;
        }
    }
    return nEnd;
}

void CStrokeSender::PlayImage(size_t iImage)
{
    const size_t iFirst = FindBegin(iImage);
    if (iFirst < m_Sent.size() && m_Sent[iFirst].eEvent != EEvent::Press)
    {
        SSent press = m_Sent[iFirst];
        press.eEvent = EEvent::Press;
        Play(press, iImage, GetPlace(iFirst, iImage));
    }
    for (size_t i = iFirst; i < m_Sent.size(); ++i)
    {
        if (m_Sent[i].eEvent != EEvent::Press && !m_Host.GetInput().IsDragging())
        {
            return;
        }
        Play(m_Sent[i], iImage, GetPlace(i, iImage));
    }
}

void CStrokeSender::Play(const SSent& sent, size_t iImage, const SPlace& place)
{
    CHostInput& input = m_Host.GetInput();
    const int32_t iX = GetPixel(m_SentX);
    const int32_t iY = GetPixel(m_SentY);
    m_Hand.played = sent.keys;
    SVec3 ground = place.at;
    if (place.bThere && m_eImages == EStrokeImages::Drags)
    {
        // The way of a stroke counts up and down, so its image must go over its own ground.
        ground.y = GetHeight(ground) + sent.fAbove;
    }
    m_pGround = place.bThere ? &ground : nullptr;
    m_bNothing = !place.bThere;
    input.SetPointForm(m_Symmetry.TurnForm(iImage - 1, sent.form));
    switch (sent.eEvent)
    {
    case EEvent::Press:
        input.SendButtonDown(m_View, m_Flags | MOUSE_LEFT, {iX, iY, 0, 0});
        break;
    case EEvent::Move:
        input.SendMouseMove(
            m_View, m_Flags | MOUSE_LEFT, {iX, iY}, {sent.iWheel, MOUSE_BUTTON_LEFT}, sent.step);
        break;
    case EEvent::Release:
        input.SendButtonUp(m_View, m_Flags, {iX, iY, 0, 0});
        break;
    }
    m_pGround = nullptr;
    m_bNothing = false;
}
