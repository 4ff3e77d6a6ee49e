// Random vendor lists of format 3 and choices on them, and what the framework in force makes of a
// choice: once more, from the IAB's texts.

const kConsentOnly = [1, 3, 4, 5, 6];

const numbers = (count) => Array.from({length: count}, (_, index) => index + 1);
const items = (count) => Object.fromEntries(numbers(count).map((id) => [id, {id}]));

function vendor(random, id) {
    const purposes = [], legIntPurposes = [], flexiblePurposes = [];
    for (const purpose of random.next() < 0.1 ? [] : numbers(11)) {
        const basis = random.next();
        if (basis < 0.4) purposes.push(purpose);
        else if (basis < 0.6) legIntPurposes.push(purpose); // 1 and 3 to 6 too: a list may err
        if (basis < 0.6 && random.bool()) flexiblePurposes.push(purpose);
    }
    const made = {id, name: `Vendor ${id}`, purposes, legIntPurposes, flexiblePurposes,
        specialPurposes: random.set(2, 0.4)};
    if (random.next() < 0.1) made.deletedDate = '2024-01-31T00:00:00Z';
    return made;
}

export function randomList(random) {
    const ids = random.set(random.pick([5, 60, 400]), random.pick([0.3, 0.9]));
    return {gvlSpecificationVersion: 3, vendorListVersion: random.integer(1, 4095),
        tcfPolicyVersion: random.integer(4, 63), purposes: items(random.integer(9, 11)),
        specialFeatures: items(2),
        vendors: Object.fromEntries(ids.map((id) => [id, vendor(random, id)]))};
}

/// A choice by the engine's keys, some of them missing; vendors that the list lacks are among them.
export function randomChoice(random, list) {
    const ids = [...Object.keys(list.vendors).map(Number), 1, 777, 4999];
    const consent = {};
    const present = random.pick([0.2, 0.9, 1]);
    const accepted = random.pick([0, 0.5, 1]);
    const enter = (prefix, number) => {
        if (random.next() < present) consent[prefix + number] = random.next() < accepted ? '1' : '0';
    };
    for (const id of ids) [-1, 0].forEach((basis) => enter('PRIVACY_VEN_', 1000 + 2 * id + basis));
    for (const id of numbers(12)) [-1, 0].forEach((basis) => enter('PRIVACY_CAT_', 10000 + 2 * id + basis));
    for (const id of numbers(3)) enter('PRIVACY_FEAT_', 13000 + 2 * id);
    const restrictions = {};
    if (random.bool())
        for (const purpose of random.set(12, 0.2)) {
            const vendors = random.subset(ids, 0.3);
            if (vendors.length > 0)
                restrictions[purpose] = Object.fromEntries(vendors.map((id) => [id, String(random.integer(0, 2))]));
        }
    return {consent, restrictions, publisher: random.bool(), language: random.pick(['en', 'de', 'fr']),
        now: random.integer(1775000000, 1900000000),
        disclosed: random.pick([ids, [], random.subset(ids, 0.5)])};
}

const section = (ids) => ({MaxVendorId: Math.max(0, ...ids), Vendors: ids});

/// The model that the string must have.
export function meant({consent, restrictions, publisher, language, now, disclosed}, list, {cmpID, cmpVersion, country}) {
    const accepted = (prefix, number) => consent[prefix + number] === '1';
    const purposes = Object.values(list.purposes).map(({id}) => id);
    const known = (ids) => ids.filter((id) => purposes.includes(id)); // a list may err
    const live = Object.values(list.vendors).filter((each) => !each.deletedDate).map((each) =>
        ({...each, purposes: known(each.purposes), legIntPurposes: known(each.legIntPurposes)}));
    const typeOf = (purpose, id) => {
        const type = restrictions[purpose]?.[id];
        return type === '2' && kConsentOnly.includes(purpose) ? '0' : type;
    };
    // Whether the vendor relies on this basis for any purpose: '1' consent, '2' legitimate interest.
    const relies = (each, basis) => purposes.some((purpose) => {
        if (basis === '2' && kConsentOnly.includes(purpose)) return false;
        const declared = each.purposes.includes(purpose) ? '1' : each.legIntPurposes.includes(purpose) ? '2' : undefined;
        if (declared === undefined) return false;
        const type = typeOf(purpose, each.id);
        if (type === undefined) return declared === basis;
        if (type === '0') return false;
        return type === basis && (declared === type || each.flexiblePurposes.includes(purpose));
    });
    const objected = (id) => {
        const own = consent[`PRIVACY_VEN_${1000 + 2 * id}`] ?? consent[`PRIVACY_VEN_${999 + 2 * id}`];
        return own === '0';
    };
    const shown = live.filter(({id}) => disclosed.includes(id));
    const purposesConsent = purposes.filter((id) => accepted('PRIVACY_CAT_', 9999 + 2 * id));
    const purposesInterest = purposes.filter((id) => accepted('PRIVACY_CAT_', 10000 + 2 * id) && !kConsentOnly.includes(id));
    const day = new Date(Math.floor(now / 86400) * 86400000).toISOString().replace('.000Z', '.0Z');
    const model = {Core: {
        Created: day, LastUpdated: day, CmpId: cmpID, CmpVersion: cmpVersion, ConsentScreen: 0,
        ConsentLanguage: language.toUpperCase(), VendorListVersion: list.vendorListVersion,
        TcfPolicyVersion: list.tcfPolicyVersion, IsServiceSpecific: true, UseNonStandardStacks: false,
        SpecialFeatureOptIns: [1, 2].filter((id) => accepted('PRIVACY_FEAT_', 13000 + 2 * id)),
        PurposesConsent: purposesConsent, PurposesLITransparency: purposesInterest,
        PurposeOneTreatment: false, PublisherCC: country,
        VendorConsent: section(purposesConsent.length === 0 ? [] : live
            .filter((each) => accepted('PRIVACY_VEN_', 999 + 2 * each.id) && relies(each, '1')).map(({id}) => id)),
        VendorLegitimateInterest: section(shown.filter((each) => {
            const special = each.specialPurposes.length > 0;
            const alone = special && each.purposes.length + each.legIntPurposes.length === 0;
            return alone || ((special || relies(each, '2')) && !objected(each.id));
        }).map(({id}) => id)),
        PubRestrictions: purposes.flatMap((purpose) => ['0', '1', '2'].map((type) => ({
            PurposeId: purpose, RestrictionType: Number(type),
            Vendors: live.filter(({id}) => typeOf(purpose, id) === type).map(({id}) => id),
        }))).filter(({Vendors}) => Vendors.length > 0),
    }, DisclosedVendors: section(shown.map(({id}) => id))};
    if (publisher)
        model.PublisherTC = {PubPurposesConsent: purposesConsent, PubPurposesLITransparency: purposesInterest,
            NumCustomPurposes: 0, CustomPurposesConsent: [], CustomPurposesLITransparency: []};
    return model;
}
