// Our encoder and decoder against those of the IAB's library: the core segment, with every vendor of
// the published list accepted that is not deleted; without that list, as many in like runs; and core
// and disclosed vendors, all those of the published list of format 3, where there is one:
//
//     CODEC_BENCH=build/bench/bench/codec_bench node bench/codec/compare.mjs

import {execFileSync} from 'node:child_process';

import {modelOf, Segment, SegmentEncoder, TCModel} from '../../tests/tcf/judge.mjs';
import {publishedList, publishedVendors} from '../../tests/tcf/published.mjs';
import {section} from '../../tests/tcf/random.mjs';

const kLimit = 1 / 25;
const kBatches = 41;
const kRounds = 100;

const runsOfThree = Array.from({length: 1097}, (_, index) => index + 1).filter((number) => number % 4);
const vendors = publishedVendors()?.live ?? [...runsOfThree, 4202];
const purposes = [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11];

const core = (listed, ids) => ({
    Created: '2026-11-21T00:00:00.0Z',
    LastUpdated: '2026-11-21T00:00:00.0Z',
    CmpId: 90,
    CmpVersion: 471,
    ConsentScreen: 0,
    ConsentLanguage: 'EN',
    VendorListVersion: 51,
    TcfPolicyVersion: 2,
    IsServiceSpecific: true,
    UseNonStandardStacks: false,
    SpecialFeatureOptIns: [1, 2],
    PurposesConsent: purposes,
    PurposesLITransparency: purposes.slice(1),
    PurposeOneTreatment: false,
    PublisherCC: 'EN',
    VendorConsent: section(ids),
    VendorLegitimateInterest: section(ids),
    PubRestrictions: [],
    ...listed,
});

function microsecondsOf(work) {
    const times = [];
    for (let batch = -10; batch < kBatches; ++batch) { // the first ones warm it up
        const start = process.hrtime.bigint();
        for (let round = 0; round < kRounds; ++round) work();
        if (batch >= 0) times.push(Number(process.hrtime.bigint() - start) / 1000 / kRounds);
    }
    return times.sort((a, b) => a - b)[kBatches >> 1];
}

function compare(ids, json, segments) {
    const model = modelOf(json);
    const texts = segments.map((segment) => SegmentEncoder.encode(model, segment));
    const its = [
        microsecondsOf(() => segments.map((segment) => SegmentEncoder.encode(model, segment)).join('.')),
        microsecondsOf(() => segments.forEach((segment, index) =>
            SegmentEncoder.decode(texts[index], new TCModel(), segment))),
    ];
    const text = texts.join('.');
    const ours = execFileSync(process.env.CODEC_BENCH, [text], {encoding: 'utf8'}).split(' ').map(Number);
    console.log(`${ids.length} vendors, ${segments.length} of the segments, ${text.length} characters`);
    ['encode', 'decode'].forEach((what, index) => {
        const ratio = ours[index] / its[index];
        console.log(`${what}: ${ours[index].toFixed(2)} us, the IAB's library ${its[index].toFixed(1)} us: ` +
            `1/${(1 / ratio).toFixed(0)}${ratio > kLimit ? ', ABOVE THE LIMIT' : ''}`);
    });
}

compare(vendors, {Core: core({}, vendors)}, [Segment.CORE]);
const list = publishedList();
if (list) {
    const live = Object.values(list.vendors).filter(({deletedDate}) => !deletedDate).map(({id}) => id);
    live.sort((a, b) => a - b);
    compare(live, {Core: core({VendorListVersion: list.vendorListVersion, TcfPolicyVersion: 4}, live),
        DisclosedVendors: section(live)}, [Segment.CORE, Segment.VENDORS_DISCLOSED]);
}
