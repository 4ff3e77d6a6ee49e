// The IAB's library, its models in the shape of `vxprivacy tc`.
//
// How it differs from us, none of which the format forbids:
// - A section's MaxVendorId is always its greatest vendor.
// - Segments are filled up to 24 bits, ours to 8.
// - A range of a restriction goes on over numbers that its vendor list lacks. It gets a list of all
//   numbers here, so that its ranges name the vendors that they are meant to.
// - It calls UseNonStandardStacks by its newer name, useNonStandardTexts.
// - Its TCString.encode wants a vendor list, from which it takes the versions and language and
//   against which it checks all signals; so the segments are encoded one by one, which is all that
//   it does besides.
// - A new model's times are cut to the day; times that are set are kept to the tenth of a second.

import {
    PurposeRestriction, Segment, SegmentEncoder, TCModel, TCString, Vector,
} from '@iabtechlabtcf/core';

export {Segment, SegmentEncoder, TCModel};

const allVendors = {vendorIds: new Set(Array.from({length: 65535}, (_, index) => index + 1))};

const vectorOf = (numbers) => {
    const vector = new Vector();
    numbers.forEach((number) => vector.set(number));
    return vector;
};
const numbersIn = (vector) => [...vector.values()].sort((a, b) => a - b);

const same = {to: (value) => value, from: (value) => value};
const date = {
    to: (text) => new Date(text),
    from: (value) => value.toISOString().replace(/00Z$/, 'Z'),
};
const set = {to: vectorOf, from: numbersIn};
const vendors = {
    to: (section) => vectorOf(section.Vendors),
    from: (vector) => ({MaxVendorId: vector.maxId, Vendors: numbersIn(vector)}),
};

// Our name, its name, and how the values are turned.
const core = [
    ['Created', 'created', date],
    ['LastUpdated', 'lastUpdated', date],
    ['CmpId', 'cmpId', same],
    ['CmpVersion', 'cmpVersion', same],
    ['ConsentScreen', 'consentScreen', same],
    ['ConsentLanguage', 'consentLanguage', same],
    ['VendorListVersion', 'vendorListVersion', same],
    ['TcfPolicyVersion', 'policyVersion', same],
    ['IsServiceSpecific', 'isServiceSpecific', same],
    ['UseNonStandardStacks', 'useNonStandardTexts', same],
    ['SpecialFeatureOptIns', 'specialFeatureOptins', set],
    ['PurposesConsent', 'purposeConsents', set],
    ['PurposesLITransparency', 'purposeLegitimateInterests', set],
    ['PurposeOneTreatment', 'purposeOneTreatment', same],
    ['PublisherCC', 'publisherCountryCode', same],
    ['VendorConsent', 'vendorConsents', vendors],
    ['VendorLegitimateInterest', 'vendorLegitimateInterests', vendors],
];
const publisher = [
    ['PubPurposesConsent', 'publisherConsents', set],
    ['PubPurposesLITransparency', 'publisherLegitimateInterests', set],
    ['NumCustomPurposes', 'numCustomPurposes', same],
    ['CustomPurposesConsent', 'publisherCustomConsents', set],
    ['CustomPurposesLITransparency', 'publisherCustomLegitimateInterests', set],
];

const fill = (model, fields, values) => {
    for (const [ours, its, turn] of fields) model[its] = turn.to(values[ours]);
};
const extract = (model, fields) =>
    Object.fromEntries(fields.map(([ours, its, turn]) => [ours, turn.from(model[its])]));

const restrictionsIn = (vector) => vector.getRestrictions()
    .map((restriction) => ({
        PurposeId: restriction.purposeId,
        RestrictionType: restriction.restrictionType,
        Vendors: vector.getVendors(restriction),
    }))
    .sort((a, b) => a.PurposeId - b.PurposeId || a.RestrictionType - b.RestrictionType);

export function modelOf(json) {
    const model = new TCModel();
    fill(model, core, json.Core);
    for (const {PurposeId, RestrictionType, Vendors} of json.Core.PubRestrictions) {
        const restriction = new PurposeRestriction(PurposeId, RestrictionType);
        Vendors.forEach((vendor) => model.publisherRestrictions.add(vendor, restriction));
    }
    model.publisherRestrictions.gvl = allVendors;
    if (json.DisclosedVendors) model.vendorsDisclosed = vectorOf(json.DisclosedVendors.Vendors);
    if (json.AllowedVendors) model.vendorsAllowed = vectorOf(json.AllowedVendors.Vendors);
    if (json.PublisherTC) fill(model, publisher, json.PublisherTC);
    return model;
}

const segments = {
    DisclosedVendors: Segment.VENDORS_DISCLOSED,
    AllowedVendors: Segment.VENDORS_ALLOWED,
    PublisherTC: Segment.PUBLISHER_TC,
};

/// The TC string of a model; the segments after the core one in the order of `names`.
export function encode(json, names) {
    const model = modelOf(json);
    return [Segment.CORE, ...names.map((name) => segments[name])]
        .map((segment) => SegmentEncoder.encode(model, segment)).join('.');
}

/// What the judge reads in a TC string; only it does not tell a segment that is missing from an
/// empty one, so the segments that `like` lacks are left out.
export function decode(text, like) {
    const model = TCString.decode(text);
    const json = {Core: {
        ...extract(model, core),
        PubRestrictions: restrictionsIn(model.publisherRestrictions),
    }};
    if (like.DisclosedVendors) json.DisclosedVendors = vendors.from(model.vendorsDisclosed);
    if (like.AllowedVendors) json.AllowedVendors = vendors.from(model.vendorsAllowed);
    if (like.PublisherTC) json.PublisherTC = extract(model, publisher);
    return json;
}
