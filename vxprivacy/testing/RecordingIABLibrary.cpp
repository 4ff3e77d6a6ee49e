// Hands every call to the real IAB library's builder, and tells of it.

#include "vxprivacy/testing/RecordingIABLibrary.h"

#include <type_traits>
#include <utility>
#include <vector>

namespace vx::recording {

class RecordingIABLibrary::Builder : public CoreStringBuilder {
public:
    explicit Builder(RecordingIABLibrary& library)
        : library_(library), real_(library.library_->makeCoreStringBuilder()) {}

    void setVendorListVersion(std::int32_t version) override {
        pass("setVendorListVersion", &CoreStringBuilder::setVendorListVersion, version);
    }
    void setConsentRecordCreated(std::int64_t time) override {
        pass("setConsentRecordCreated", &CoreStringBuilder::setConsentRecordCreated, time);
    }
    void setConsentRecordLastUpdated(std::int64_t time) override {
        pass("setConsentRecordLastUpdated", &CoreStringBuilder::setConsentRecordLastUpdated, time);
    }
    void setVendorConsentSectionMaxVendorId(std::int32_t vendor) override {
        pass("setVendorConsentSectionMaxVendorId",
             &CoreStringBuilder::setVendorConsentSectionMaxVendorId, vendor);
    }
    void setVendorLegitimateInterestSectionMaxVendorId(std::int32_t vendor) override {
        pass("setVendorLegitimateInterestSectionMaxVendorId",
             &CoreStringBuilder::setVendorLegitimateInterestSectionMaxVendorId, vendor);
    }
    void setPurposesConsent(Identifiers purposes) override {
        pass("setPurposesConsent", &CoreStringBuilder::setPurposesConsent, purposes);
    }
    void setPurposesLITransparency(Identifiers purposes) override {
        pass("setPurposesLITransparency", &CoreStringBuilder::setPurposesLITransparency, purposes);
    }
    void setVendorConsentSectionBitField(Identifiers vendors) override {
        pass("setVendorConsentSectionBitField", &CoreStringBuilder::setVendorConsentSectionBitField,
             vendors);
    }
    void setVendorLegitimateInterestSectionBitField(Identifiers vendors) override {
        pass("setVendorLegitimateInterestSectionBitField",
             &CoreStringBuilder::setVendorLegitimateInterestSectionBitField, vendors);
    }
    void setSpecialFeatureOptInts(Identifiers features) override {
        pass("setSpecialFeatureOptInts", &CoreStringBuilder::setSpecialFeatureOptInts, features);
    }
    void setCmpID(std::int32_t cmp) override {
        pass("setCmpID", &CoreStringBuilder::setCmpID, cmp);
    }
    void setIsServiceSpecific(bool serviceSpecific) override {
        pass("setIsServiceSpecific", &CoreStringBuilder::setIsServiceSpecific, serviceSpecific);
    }
    void setTcfPolicyVersion(std::int32_t version) override {
        pass("setTcfPolicyVersion", &CoreStringBuilder::setTcfPolicyVersion, version);
    }
    void setCmpVersion(std::int32_t version) override {
        pass("setCmpVersion", &CoreStringBuilder::setCmpVersion, version);
    }
    void setConsentLanguage(std::string_view language) override {
        pass("setConsentLanguage", &CoreStringBuilder::setConsentLanguage, language);
    }
    void setPublisherCC(std::string_view country) override {
        pass("setPublisherCC", &CoreStringBuilder::setPublisherCC, country);
    }
    void setChoice(const OrderedDictionary<std::string>& consent) override {
        real_->setChoice(consent);
    }
    std::string buildConsentString(bool withPublisherTC) override {
        record("buildConsentString", withPublisherTC);
        std::string text = real_->buildConsentString(withPublisherTC);
        library_.sink_({{"tc", text}});
        return text;
    }
    void writeTCData() override {
        library_.sink_({{"cmp", Event::array({"writeTCData"})}});
        real_->writeTCData();
        library_.createdDate_.reset();
    }

private:
    void record(std::string_view operation, const Event& value) {
        library_.sink_({{"builder", Event::array({operation, value})}});
    }
    template <class Value>
    void pass(std::string_view name, void (CoreStringBuilder::*operation)(Value), Value value) {
        if constexpr (std::is_same_v<Value, Identifiers>)
            record(name, std::vector<std::int32_t>(value.begin(), value.end()));
        else
            record(name, value);
        (*real_.*operation)(value);
    }

    RecordingIABLibrary& library_;
    std::unique_ptr<CoreStringBuilder> real_;
};

RecordingIABLibrary::RecordingIABLibrary(std::string createdDate, services::TCFSettings settings,
                                         EventSink sink)
    : settings_(std::move(settings)), sink_(std::move(sink)), createdDate_(std::move(createdDate)) {
    relaunch();
}

void RecordingIABLibrary::setCMPSDKID() {
    sink_({{"cmp", Event::array({"setCMPSDKID"})}});
    library_->setCMPSDKID();
}

std::string RecordingIABLibrary::getCreatedDate() const {
    return createdDate_ ? *createdDate_ : library_->getCreatedDate();
}

void RecordingIABLibrary::setPublisherRestrictions(const PublisherRestrictions& restrictions) {
    sink_({{"cmp", Event::array({"setPublisherRestrictions", asObject(restrictions)})}});
    restrictions_ = restrictions;
    library_->setPublisherRestrictions(restrictions);
}

void RecordingIABLibrary::setExplicitRestrictions(const ExplicitRestrictions& restrictions) {
    library_->setExplicitRestrictions(restrictions);
}

void RecordingIABLibrary::setDisclosedVendors(CoreStringBuilder::Identifiers vendors,
                                              const JSONValue& vendorList) {
    library_->setDisclosedVendors(vendors, vendorList);
}

void RecordingIABLibrary::saveConsentString(std::string_view consent) {
    sink_({{"cmp", Event::array({"saveConsentString", consent})}});
    library_->saveConsentString(consent);
}

void RecordingIABLibrary::resetTCData() {
    sink_({{"cmp", Event::array({"resetTCData"})}});
    library_->resetTCData();
    createdDate_.reset();
}

std::unique_ptr<CoreStringBuilder> RecordingIABLibrary::makeCoreStringBuilder() {
    return std::make_unique<Builder>(*this);
}

} // namespace vx::recording
