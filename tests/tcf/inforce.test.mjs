// The profile's strings say what was meant, to the IAB's library and to us, and break no rule.
// CHOICES says how many on random lists, SEED which ones.

import assert from 'node:assert/strict';
import {after, test} from 'node:test';

import {Codec} from './codec.mjs';
import {meant, randomChoice, randomList} from './inforce.mjs';
import * as judge from './judge.mjs';
import {publishedList} from './published.mjs';
import {Random} from './random.mjs';

const codec = new Codec();
after(() => codec.close());

const identity = {cmpID: 300, cmpVersion: 7, country: 'FR'};
const kChoices = 50; // of each list

async function agreeOn(choices, listOf) {
    const first = Number(process.env.SEED ?? 1);
    for (let seed = first; seed < first + choices / kChoices; ++seed) {
        const random = new Random(seed);
        const list = listOf(random);
        await codec.ask({list: JSON.stringify(list), ...identity});
        for (let choice = 0; choice < kChoices; ++choice) {
            const chosen = randomChoice(random, list);
            const {text, findings} = await codec.ask({choice: chosen});
            const model = meant(chosen, list, identity);
            const where = `seed ${seed}, choice ${choice}: ${text}`;
            assert.deepEqual(findings, [], where);
            assert.deepEqual(judge.decode(text, model), model, where);
            assert.deepEqual(await codec.decode(text), model, where);
        }
    }
}

test('random choices on random lists of format 3', async () => {
    await agreeOn(Number(process.env.CHOICES ?? 500), randomList);
});

const published = publishedList();

test('random choices on the published list of format 3', {
    skip: !published && 'VXPRIVACY_DATA does not name the folder of published data',
}, async () => {
    await agreeOn(50, () => published);
});
