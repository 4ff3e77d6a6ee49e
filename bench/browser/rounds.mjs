// Sides that are compared take turns, so that what disturbs the machine disturbs both.

const median = (numbers) => numbers.sort((a, b) => a - b)[numbers.length >> 1];

/// Of records with the same numbers in each.
export const medians = (records) => Object.fromEntries(Object.keys(records[0]).map((name) =>
  [name, median(records.map((record) => record[name]))]));

/// Visits each side once a round; gives the medians of what each visit tells, by side.
export async function inTurns(rounds, sides) {
  const told = Object.fromEntries(Object.keys(sides).map((side) => [side, []]));
  for (let round = 0; round < rounds; ++round) {
    const order = Object.keys(sides);
    if (round % 2) order.reverse();
    for (const side of order) told[side].push(await sides[side]());
  }
  return Object.fromEntries(Object.entries(told).map(([side, visits]) => [side, medians(visits)]));
}
