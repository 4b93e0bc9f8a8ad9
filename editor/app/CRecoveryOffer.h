#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

class CDocumentQuestions;
class CEditor;
struct SRecoverable;

// Offers what runs that did not end properly have left, once for each. Owned by CDocumentActions;
// everything given is borrowed. UI thread.
class CRecoveryOffer
{
public:
    // onLevel: a level was recovered.
    CRecoveryOffer(CEditor& editor, CDocumentQuestions& questions, std::function<void()> onLevel);

    // Sets what gives a level back, which answers false after a logged line. Before the first
    // offer.
    void SetRecover(std::function<bool(const SRecoverable&)> recover)
    {
        m_Recover = std::move(recover);
    }

    // Offers everything that can be found, one by one, until the person takes something; at the
    // start. Says where recordings are that were cut off, too. True when a level was recovered.
    bool OfferAll();
    // Offers what there is of the level of that file, also what was put off before. True when it
    // was recovered.
    bool OfferOf(const std::string& strLevel);

private:
    bool Offer(const SRecoverable& entry);

    CEditor& m_Editor;
    CDocumentQuestions& m_Questions;
    std::function<void()> m_OnLevel;
    std::function<bool(const SRecoverable&)> m_Recover;
    std::vector<std::string> m_Later; // stems that the person was asked about
};
