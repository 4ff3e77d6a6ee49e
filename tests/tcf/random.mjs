// Random models in the shape of `vxprivacy tc`, the same for the same seed.

// Mulberry32: 32 bits of state are enough for tests.
export class Random {
    constructor(seed) {
        this.state = seed >>> 0;
    }

    /// From 0 to less than 1.
    next() {
        this.state = (this.state + 0x6d2b79f5) >>> 0;
        let t = this.state;
        t = Math.imul(t ^ (t >>> 15), t | 1);
        t ^= t + Math.imul(t ^ (t >>> 7), t | 61);
        return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
    }

    integer(least, greatest) {
        return least + Math.floor(this.next() * (greatest - least + 1));
    }

    pick(values) {
        return values[this.integer(0, values.length - 1)];
    }

    bool() {
        return this.next() < 0.5;
    }

    /// Each of 1 to `greatest` with the given chance.
    set(greatest, chance = this.next()) {
        const numbers = [];
        for (let number = 1; number <= greatest; ++number)
            if (this.next() < chance) numbers.push(number);
        return numbers;
    }

    subset(values, chance) {
        return values.filter(() => this.next() < chance);
    }

    /// Runs of random lengths, so that ranges are met as often as bit fields.
    runs(greatest) {
        const numbers = [];
        for (let number = this.integer(1, 60); number <= greatest;) {
            const end = Math.min(greatest, number + this.integer(0, this.pick([0, 3, 200])));
            while (number <= end) numbers.push(number++);
            number += this.integer(1, this.pick([1, 30, 1000]));
        }
        return numbers;
    }
}

export const section = (numbers) => ({MaxVendorId: numbers.at(-1) ?? 0, Vendors: numbers});

const letters = (random) =>
    String.fromCharCode(random.integer(65, 90), random.integer(65, 90));

const time = (random) =>
    new Date(random.pick([random.integer(0, 2 ** 36 - 1), 17e9 + random.integer(0, 1e9)]) * 100)
        .toISOString().replace(/00Z$/, 'Z');

function vendors(random) {
    const greatest = random.pick([0, 1, 46, 64, 128, 500, 1500, random.next() < 0.03 ? 65535 : 3000]);
    return random.bool() ? random.set(greatest) : random.runs(greatest);
}

function restrictions(random) {
    const made = [];
    for (let purpose = 1; purpose <= 63; ++purpose)
        for (let type = 0; type <= 2; ++type)
            if (random.next() < 0.01) {
                const numbers = vendors(random).slice(0, 4000);
                if (numbers.length > 0)
                    made.push({PurposeId: purpose, RestrictionType: type, Vendors: numbers});
            }
    return made;
}

function publisher(random) {
    const custom = random.pick([0, 1, 24, 63, random.integer(0, 63)]);
    return {
        PubPurposesConsent: random.set(24),
        PubPurposesLITransparency: random.set(24),
        NumCustomPurposes: custom,
        CustomPurposesConsent: random.set(custom),
        CustomPurposesLITransparency: random.set(custom),
    };
}

/// The judge allows no CMP below 2.
export function randomModel(random) {
    const model = {Core: {
        Created: time(random),
        LastUpdated: time(random),
        CmpId: random.integer(2, 4095),
        CmpVersion: random.integer(0, 4095),
        ConsentScreen: random.integer(0, 63),
        ConsentLanguage: letters(random),
        VendorListVersion: random.integer(0, 4095),
        TcfPolicyVersion: random.integer(0, 63),
        IsServiceSpecific: random.bool(),
        UseNonStandardStacks: random.bool(),
        SpecialFeatureOptIns: random.set(12),
        PurposesConsent: random.set(24),
        PurposesLITransparency: random.set(24),
        PurposeOneTreatment: random.bool(),
        PublisherCC: letters(random),
        VendorConsent: section(vendors(random)),
        VendorLegitimateInterest: section(vendors(random)),
        PubRestrictions: restrictions(random),
    }};
    if (random.bool()) model.DisclosedVendors = section(vendors(random));
    if (random.bool()) model.AllowedVendors = section(vendors(random));
    if (random.bool()) model.PublisherTC = publisher(random);
    return model;
}

export function shuffled(random, values) {
    return values.map((value) => [random.next(), value])
        .sort(([a], [b]) => a - b).map(([, value]) => value);
}
