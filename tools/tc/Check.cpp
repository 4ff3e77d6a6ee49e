// The rules of the framework in force, one function each, and where each is written.

#include "tools/tc/Check.h"

#include <algorithm>
#include <array>

#include "vxprivacy/services/iab/Countries.h"
#include "vxprivacy/services/iab/Decoder.h"
#include "vxprivacy/services/iab/InForceRules.h"

namespace vx::tools::tc {

namespace {

using namespace services::tcf;

constexpr std::uint64_t kDay = 864'000; // tenths of a second
// The first day on which a string needs what the rule asks for.
constexpr std::uint64_t kOctober2023 = 16'961'184'000;
constexpr std::uint64_t kMarch2026 = 17'723'232'000;

constexpr std::string_view kFormats = "Consent string and vendor list formats v2, ";

std::string formats(std::string_view section) {
    return std::string(kFormats).append(1, '"').append(section).append(1, '"');
}

std::string listed(const IdentifierSet& set) {
    constexpr std::size_t kMost = 20;
    std::string text;
    std::size_t count = 0;
    set.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        if (++count <= kMost)
            text += (text.empty() ? "" : " ") + std::to_string(first) +
                    (last == first ? "" : '-' + std::to_string(last));
    });
    return text + (count > kMost ? " and more" : "");
}

template <class Condition>
IdentifierSet filtered(const IdentifierSet& set, Condition keep) {
    IdentifierSet kept;
    set.forEachRange([&](std::uint32_t first, std::uint32_t last) {
        for (std::uint32_t identifier = first; identifier <= last; ++identifier)
            if (keep(identifier))
                kept.insert(identifier);
    });
    return kept;
}

IdentifierSet without(const IdentifierSet& excluded, const IdentifierSet& set) {
    return filtered(set, [&](std::uint32_t id) { return !excluded.contains(id); });
}

// Goes through one string.
class Checker {
public:
    Checker(const TCModel& model, const std::vector<FieldPlace>& places, const CheckLists& lists)
        : model_(model), places_(places), lists_(lists) {}

    std::vector<Finding> findings() &&;

private:
    void dates();
    void cmp();
    void versions();
    void scope();
    void purposes();
    void country();
    void vendorConsent();
    void restrictions();
    void segments();
    void byVendorList(const VendorList& list);
    void knownItems(const VendorList& list);
    void liveVendors(const VendorList& list);
    void legitimateInterests(const VendorList& list);

    void find(std::string rule, std::string field, std::string what, std::string source);
    void findAll(std::string rule, std::string field, const IdentifierSet& wrong, std::string what,
                 std::string source);

    const TCModel& model_;
    const std::vector<FieldPlace>& places_;
    const CheckLists& lists_;
    std::vector<Finding> findings_;
};

void Checker::find(std::string rule, std::string field, std::string what, std::string source) {
    Finding finding{std::move(rule), std::move(field), {}, std::move(what), std::move(source)};
    const auto place = std::ranges::find(places_, finding.field, &FieldPlace::field);
    if (place != places_.end())
        finding.bits.emplace(place->first, place->last);
    findings_.push_back(std::move(finding));
}

// `what` is said of the identifiers in `wrong`, where there are any.
void Checker::findAll(std::string rule, std::string field, const IdentifierSet& wrong,
                      std::string what, std::string source) {
    if (!wrong.empty())
        find(std::move(rule), std::move(field), std::move(what) + ": " + listed(wrong),
             std::move(source));
}

void Checker::dates() {
    const std::string source = formats("What happened to Created and LastUpdated?");
    if (model_.created != model_.lastUpdated)
        find("dates", "Core.Created", "it is not LastUpdated", source);
    if (model_.lastUpdated % kDay != 0)
        find("dates", "Core.LastUpdated", "it has an hour; only the day may be told", source);
}

void Checker::cmp() {
    const std::string source = formats("What is contained in the Global CMP List?");
    const std::string number = std::to_string(model_.cmpId);
    if (model_.cmpId < kLeastCMP)
        return find("cmp", "Core.CmpId", number + " is not from 2 to 4095", source);
    if (!lists_.cmps)
        return;
    const auto entry = lists_.cmps->find(model_.cmpId);
    if (entry == lists_.cmps->end())
        find("cmp", "Core.CmpId", number + " is not in the list of CMPs", source);
    else if (!entry->second)
        find("cmp", "Core.CmpId", number + " is deleted from the list of CMPs", source);
}

void Checker::versions() {
    if (model_.vendorListVersion == 0)
        find("vendor-list", "Core.VendorListVersion", "there is no list 0",
             formats("The Core String") + ", VendorListVersion");
    if (model_.lastUpdated >= kOctober2023 && model_.tcfPolicyVersion < kLeastPolicyVersion)
        find("policy-version", "Core.TcfPolicyVersion",
             std::to_string(model_.tcfPolicyVersion) +
                 " is below 4, which strings after 30 September 2023 need",
             formats("Managing conflicting string versions"));
}

void Checker::scope() {
    if (!model_.isServiceSpecific)
        find("service-specific", "Core.IsServiceSpecific", "it must be 1",
             formats("The Core String") + ", IsServiceSpecific");
}

void Checker::purposes() {
    findAll(
        "purpose-legitimate-interest", "Core.PurposesLITransparency",
        filtered(model_.purposesLITransparency,
                 [](std::uint32_t purpose) { return (kConsentOnly & purposeBit(purpose)) != 0; }),
        "no legitimate interest may be claimed for purpose",
        formats("The Core String") + ", PurposesLITransparency");
}

void Checker::country() {
    if (!isCountry(model_.publisherCC))
        find("country", "Core.PublisherCC",
             '"' + model_.publisherCC + "\" is no country of ISO 3166-1",
             formats("The Core String") + ", PublisherCC");
}

void Checker::vendorConsent() {
    if (!model_.vendorConsent.vendors.empty() && model_.purposesConsent.empty())
        find("no-purpose", "Core.PurposesConsent",
             "there is none beside accepted vendors: was the user asked for any?",
             formats("What information is stored in a TC String?") + ", 2");
}

void Checker::restrictions() {
    const std::string field = "Core.PubRestrictions";
    const std::string source = formats("The Core String") + ", RestrictionType";
    std::map<std::uint32_t, IdentifierSet> restricted; // by purpose
    for (const auto& [restriction, vendors] : model_.publisherRestrictions) {
        const std::string purpose = std::to_string(restriction.purpose);
        if (restriction.type == Restriction::RequireLegitimateInterest &&
            (kConsentOnly & purposeBit(restriction.purpose)))
            find("restrictions", field,
                 "purpose " + purpose + " cannot rely on legitimate interest", source);
        IdentifierSet& all = restricted[restriction.purpose];
        findAll("restrictions", field,
                filtered(vendors, [&](std::uint32_t vendor) { return all.contains(vendor); }),
                "purpose " + purpose + " has two restrictions for vendor", source);
        vendors.forEachRange(
            [&](std::uint32_t first, std::uint32_t last) { all.insertRange(first, last); });
    }
}

void Checker::segments() {
    // The IAB's texts make the segment mandatory without a day; this one is what CMPs publish.
    if (!model_.disclosedVendors && model_.lastUpdated >= kMarch2026)
        find("disclosed-vendors", "DisclosedVendors",
             "there is no such segment, which strings after 28 February 2026 need",
             formats("TC String Format") + "; the date: as CMPs publish it");
    if (model_.disclosedVendors)
        findAll("disclosed-vendors", "Core.VendorLegitimateInterest",
                without(model_.disclosedVendors->vendors, model_.vendorLegitimateInterest.vendors),
                "the user was not shown vendor",
                formats("Why was the disclosed vendor section made mandatory in TCF 2.3?"));
    if (model_.allowedVendors)
        find("allowed-vendors", "AllowedVendors.Vendors", "there is no such segment any more",
             formats("Disclosed Vendors") + ", SegmentType");
}

void Checker::byVendorList(const VendorList& list) {
    if (list.version != model_.vendorListVersion)
        return find("vendor-list", "Core.VendorListVersion",
                    "it is " + std::to_string(model_.vendorListVersion) + ", the list given " +
                        std::to_string(list.version) + ": the rules of the list were left out",
                    formats("The Core String") + ", VendorListVersion");
    if (list.policyVersion != model_.tcfPolicyVersion)
        find("policy-version", "Core.TcfPolicyVersion",
             "it is " + std::to_string(model_.tcfPolicyVersion) + ", the list's " +
                 std::to_string(list.policyVersion),
             formats("The Core String") + ", TcfPolicyVersion");
    knownItems(list);
    liveVendors(list);
    legitimateInterests(list);
}

void Checker::knownItems(const VendorList& list) {
    const std::string source = formats("The Global Vendor List");
    findAll("items", "Core.SpecialFeatureOptIns",
            without(list.specialFeatures, model_.specialFeatureOptIns),
            "the list has no special feature", source);
    findAll("items", "Core.PurposesConsent", without(list.purposes, model_.purposesConsent),
            "the list has no purpose", source);
    findAll("items", "Core.PurposesLITransparency",
            without(list.purposes, model_.purposesLITransparency), "the list has no purpose",
            source);
    for (const auto& [restriction, vendors] : model_.publisherRestrictions)
        if (!list.purposes.contains(restriction.purpose))
            find("items", "Core.PubRestrictions",
                 "the list has no purpose: " + std::to_string(restriction.purpose), source);
}

void Checker::liveVendors(const VendorList& list) {
    const auto judge = [&](const std::string& field, const VendorSection& section) {
        findAll("vendors", field,
                filtered(section.vendors, [&](auto id) { return list.deleted.contains(id); }),
                "the list has deleted vendor",
                formats("Example Global Vendor List JSON Object") + ", deletedDate");
        findAll("vendors", field, without(list.deleted, without(list.live, section.vendors)),
                "the list has no vendor", formats("The Global Vendor List"));
    };
    judge("Core.VendorConsent", model_.vendorConsent);
    judge("Core.VendorLegitimateInterest", model_.vendorLegitimateInterest);
    if (model_.disclosedVendors)
        judge("DisclosedVendors.Vendors", *model_.disclosedVendors);
}

void Checker::legitimateInterests(const VendorList& list) {
    IdentifierSet unfounded;
    IdentifierSet forgotten;
    for (const ListedVendor& vendor : list.vendors) {
        const bool established = model_.vendorLegitimateInterest.vendors.contains(vendor.id);
        if (established && !vendor.hasSpecialPurposes &&
            !permitted(vendor, model_.publisherRestrictions).legitimateInterest)
            unfounded.insert(vendor.id);
        if (!established && vendor.hasSpecialPurposesOnly() && model_.disclosedVendors &&
            model_.disclosedVendors->vendors.contains(vendor.id))
            forgotten.insert(vendor.id);
    }
    const std::string source = formats("The Core String") + ", Vendor Legitimate Interest Section";
    findAll("vendor-legitimate-interest", "Core.VendorLegitimateInterest", unfounded,
            "neither a legitimate interest nor a special purpose has vendor", source);
    findAll("vendor-legitimate-interest", "Core.VendorLegitimateInterest", forgotten,
            "special purposes alone, and must be 1, has vendor", source);
}

std::vector<Finding> Checker::findings() && {
    dates();
    cmp();
    versions();
    scope();
    purposes();
    country();
    vendorConsent();
    restrictions();
    segments();
    if (lists_.vendors)
        byVendorList(*lists_.vendors);
    return std::move(findings_);
}

} // namespace

CMPList cmpListOf(const JSONValue& document) {
    CMPList list;
    for (const auto& [key, record] : document["cmps"].members())
        if (const auto id = record["id"].integer(); id && *id >= 0 && *id <= kGreatestCMP)
            list[static_cast<std::uint32_t>(*id)] = !record["deletedDate"];
    return list;
}

std::vector<Finding> check(std::string_view text, const CheckLists& lists) {
    std::vector<FieldPlace> places;
    const auto decoded = decode(text, &places);
    if (const auto* error = std::get_if<TCError>(&decoded))
        return {{"format",
                 error->field,
                 {{error->bit, error->bit}},
                 error->why,
                 formats("TC String Format")}};
    return Checker(std::get<TCModel>(decoded), places, lists).findings();
}

} // namespace vx::tools::tc
