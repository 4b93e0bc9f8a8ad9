#pragma once

#include <memory>

struct SGroundAct;

// What goes along with the ground of a level when that is changed as a whole, and back again with
// undo. Owned by the step.
class IGroundCompanion
{
public:
    virtual ~IGroundCompanion() = default;

    // The ground is about to become the other one: before the change, and at each step of undo and
    // redo. Needs no memory that it could lack.
    virtual void Swap() = 0;
};

// Prepares what has to go along. Borrowed by CHostGround.
class IGroundFollower
{
public:
    virtual ~IGroundFollower() = default;

    // Called before anything changes, with no drag under way. bRepeated: the act is one that was
    // done before and is given back, so whatever it had made is there. pCompanion stays null where
    // nothing goes along. False after one logged line: it cannot follow, and the act is refused.
    virtual bool Follow(const SGroundAct& act,
                        bool bRepeated,
                        std::unique_ptr<IGroundCompanion>& pCompanion) = 0;

    // The end of the act that Follow was called for, or might have been: it is a step now; or it
    // is not after all, and what was made for it is worth nothing.
    virtual void OnDone(bool bDone) = 0;
};
