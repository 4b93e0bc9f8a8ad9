#pragma once

#include "editor/app/SHandState.h"
#include "editor/view/CStrokeSampler.h"
#include "editor/view/SSymmetry.h"
#include "host/HostTypes.h"
#include "host/IPluginStrokes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

class CEditorHost;
class CTerrain;

// How the images of a stroke reach the plug-in.
enum class EStrokeImages
{
    Moves, // each point stands for itself: its images follow it in the same drag
    Drags, // drags of their own, which begin where the image comes onto the terrain
    Ends,  // the same for tools that work from a place or to one: both are on the terrain, or none
};

// Sends the events of a view's strokes to the host, with their images. Drags of their own are
// played when the one of the hand is over, on the ground as it is then; ends are at the heights
// that they had when the hand's event came. An image lies as far above its ground as the point
// above its own. What falls off the terrain has no image, and neither has what is its own image.
// Owned by the stroke of a view. UI thread.
class CStrokeSender
{
public:
    CStrokeSender(CEditorHost& host, ViewId view, SHandState& hand); // borrowed

    void Begin(const SSymmetry& symmetry, EStrokeImages eImages); // for the stroke that comes

    // Whether images of the stroke will be drags of their own.
    bool HasOwnDrags() const { return m_eImages != EStrokeImages::Moves && m_Symmetry.IsOn(); }

    // How the brush is put down by the events that come; at images as it looks there.
    void SetForm(const SPointForm& form) { m_Form = form; }

    // fX, fY: device pixels of the view. pGround: what the plug-in is told when it asks for the
    // ground there; null: whatever the view aims at.
    void Press(float fX, float fY, uint32_t uFlags, const SVec3* pGround);

    // The press did its work on that ground, as a move would: its images do it, too.
    void SendPressImages(const SVec3& ground) { SendImages(ground, GetAbove(ground), m_Flags); }

    void Move(const SStrokePoint& point, uint32_t uFlags);
    void MoveTo(const SVec3& ground, uint32_t uFlags); // where no cursor points at
    void Release(float fX, float fY, uint32_t uFlags, const SVec3* pGround = nullptr);
    void Hover(float fX, float fY, uint32_t uFlags);

    // The host has sent the release.
    void NoteRelease() { Note(EEvent::Release, {}); }

    // After a release: plays the drags that are images of the one that was sent, each whole, as
    // long as there is memory.
    void PlayImages();

    // True when what the plug-in asks for does not depend on the view: bHit and hit are then the
    // answer.
    bool HasAnswer(bool& bHit, SVec3& hit) const;
    // Where the event that the plug-in asks about was: exactly, when it is the one sent last, which
    // the release of a drag that the host ends is, otherwise the pixel's middle.
    void FindPosition(ViewPoint point, float& fX, float& fY) const;
    // To be called with what the plug-in was told; null: nothing is there.
    void NoteHit(const SVec3* pHit);

    // One image of a point.
    struct SImage
    {
        SVec3 at;
        size_t i = 0; // of the symmetry
    };

    // Finds the images of a point, on the ground as it is now. All that have one; at most
    // SSymmetry::MOST_IMAGES.
    static size_t FindImages(const CTerrain* pTerrain,
                             const SSymmetry& symmetry,
                             const SVec3& point,
                             std::array<SImage, SSymmetry::MOST_IMAGES>& images);

private:
    enum class EEvent
    {
        Press,
        Move,
        Release,
    };

    struct SPlace
    {
        bool bThere = false;
        SVec3 at;
    };

    // What the hand has sent; its places, the hand's own first, then those of the images, are
    // m_nPlaces of m_Places.
    struct SSent
    {
        EEvent eEvent = EEvent::Press;
        SStepBlock step;
        int32_t iWheel = 0;
        SPointForm form;
        float fAbove = 0.0F; // as GetAbove
        SPlayedKeys keys;    // that were held
    };

    using Told = std::array<SPlace, SSymmetry::MOST_IMAGES + 1>;

    const CTerrain* GetTerrain() const;
    float GetHeight(const SVec3& place) const;

    float GetAbove(const SVec3& hit) const { return hit.y - GetHeight(hit); }

    void Await(float fX, float fY, const SVec3* pGround);
    void TakeKeys();
    void Note(EEvent eEvent, const SStrokePoint& point);
    const SPlace& GetPlace(size_t iEvent, size_t iImage) const;
    bool IsDouble(size_t iImage) const;
    size_t FindBegin(size_t iImage) const;
    void PlayImage(size_t iImage);
    void Play(const SSent& sent, size_t iImage, const SPlace& place);
    void SendImages(const SVec3& point, float fAbove, uint32_t uFlags);
    void SendMove(float fX, float fY, uint32_t uFlags, const SStrokePoint& point);

    CEditorHost& m_Host;
    ViewId m_View;
    SHandState& m_Hand;
    SSymmetry m_Symmetry;
    EStrokeImages m_eImages = EStrokeImages::Moves;
    SPointForm m_Form;
    uint32_t m_Flags = 0; // of the last event
    float m_SentX = 0.0F; // of the last event, more exact than its pixel
    float m_SentY = 0.0F;
    const SVec3* m_pGround = nullptr; // what the event that is being sent points at
    bool m_bNothing = false;          // it points at nothing
    Told m_Told;                      // of the event that is being sent
    float m_ToldAbove = 0.0F;
    SPlayedKeys m_ToldKeys; // that the plug-in sees
    size_t m_nPlaces = 0;
    std::vector<SSent> m_Sent;
    std::vector<SPlace> m_Places;
};
