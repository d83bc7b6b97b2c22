#pragma once

#include "adapters/jsonfile/consent_file.h"
#include "adapters/location/consented_location_manager.h"
#include "tests/contracts/location_manager_contract.h"
#include "tests/fakes/scripted_consent_prompt.h"
#include "tests/support/temporary_folder.h"

namespace bridge {

// A manager over a source that a derived site makes, and a user who answers as the test says.
class ConsentedSite : public LocationManagerSite {
public:
    std::unique_ptr<LocationManager> start(EventLoop& loop) override {
        m_prompt.answer = user == User::allows;
        m_prompt.fails = user == User::cannotBeAsked;
        m_consent.setStatus(PrivacyService::location, status);
        return std::make_unique<ConsentedLocationManager>(loop, m_consent, makeSource(loop));
    }

protected:
    virtual std::unique_ptr<LocationSource> makeSource(EventLoop& loop) = 0;

private:
    TemporaryFolder m_folder;
    ScriptedConsentPrompt m_prompt;
    ConsentFile m_consent{m_folder.file("consent.json"), m_prompt};
};

} // namespace bridge
