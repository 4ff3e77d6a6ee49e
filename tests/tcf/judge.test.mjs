// What we encode the IAB's library reads as it was meant, and what it encodes we do.

import assert from 'node:assert/strict';
import {after, test} from 'node:test';

import {Codec} from './codec.mjs';
import * as judge from './judge.mjs';
import {publishedVendors} from './published.mjs';
import {Random, randomModel, section, shuffled} from './random.mjs';

const codec = new Codec();
after(() => codec.close());

async function agree(json, random) {
    const names = shuffled(random, Object.keys(json).filter((name) => name !== 'Core'));
    assert.deepEqual(judge.decode(await codec.encode(json), json), json, 'the judge reads');
    assert.deepEqual(await codec.decode(judge.encode(json, names)), json, 'we read');
}

// `make` makes a model of a source of randomness; each model has a seed of its own.
async function agreeOn(count, make) {
    const first = Number(process.env.SEED ?? 1);
    for (let seed = first; seed < first + count; ++seed) {
        const random = new Random(seed);
        try {
            await agree(make(random), random);
        } catch (error) {
            console.error(`seed ${seed} (repeat with SEED=${seed})`);
            throw error;
        }
    }
}

test('random models', async () => {
    await agreeOn(2500, randomModel);
});

const published = publishedVendors();

test('sets of the published vendors', {
    skip: !published && 'VXPRIVACY_DATA does not name the folder of published data',
}, async () => {
    for (const density of [0, 0.01, 0.05, 0.5, 0.99, 1])
        for (const numbers of [published.all, published.live])
            await agreeOn(density === 0 || density === 1 ? 1 : 20, (random) => {
                const model = randomModel(random);
                model.Core.VendorConsent = section(random.subset(numbers, density));
                model.Core.VendorLegitimateInterest = section(random.subset(numbers, density));
                return model;
            });
});
