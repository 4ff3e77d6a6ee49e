#include "vxprivacy/platform/iab/VXCMPStorage.h"

#include "vxprivacy/platform/core/Runtime.h"

namespace vx {

CoreStringBuilder::~CoreStringBuilder() = default;

IABLibrary::~IABLibrary() = default;

void CoreStringBuilder::setChoice(const OrderedDictionary<std::string>&) {}

void IABLibrary::setExplicitRestrictions(const ExplicitRestrictions&) {}

void IABLibrary::setDisclosedVendors(CoreStringBuilder::Identifiers, const JSONValue&) {}

bool IABLibrary::tellsDataUse() const {
    return false;
}

bool VXCMPStorage::present() {
    return platform().iab != nullptr;
}

void VXCMPStorage::setCMPSDKID() {
    if (present())
        platform().iab->setCMPSDKID();
}

std::string VXCMPStorage::getCreatedDate() {
    return present() ? platform().iab->getCreatedDate() : std::string();
}

void VXCMPStorage::setPublisherRestrictions(const PublisherRestrictions& restrictions) {
    if (present())
        platform().iab->setPublisherRestrictions(restrictions);
}

void VXCMPStorage::setExplicitRestrictions(const ExplicitRestrictions& restrictions) {
    if (present())
        platform().iab->setExplicitRestrictions(restrictions);
}

void VXCMPStorage::setDisclosedVendors(CoreStringBuilder::Identifiers vendors,
                                       const JSONValue& vendorList) {
    if (present())
        platform().iab->setDisclosedVendors(vendors, vendorList);
}

bool VXCMPStorage::tellsDataUse() {
    return present() && platform().iab->tellsDataUse();
}

void VXCMPStorage::saveConsentString(std::string_view consent) {
    if (present())
        platform().iab->saveConsentString(consent);
}

void VXCMPStorage::resetTCData() {
    if (present())
        platform().iab->resetTCData();
}

} // namespace vx
