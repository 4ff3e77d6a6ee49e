// What the vendor list in force calls the numbers of the store and of the TC string.

const kOffsets = { CAT: 10000, VEN: 1000 };
const kSpecialFeatures = 13000;

// Of each item the store has two entries: the odd one is consent, the even one legitimate interest.
function addPair(names, kind, id, name) {
  const even = kOffsets[kind] + 2 * Number(id);
  names[`PRIVACY_${kind}_${even - 1}`] = `${name}: consent`;
  names[`PRIVACY_${kind}_${even}`] = `${name}: legitimate interest`;
}

/** Names by key of the store; none without a list. */
export function keyNames(list) {
  const names = {};
  for (const [id, name] of Object.entries(list?.purposes ?? {})) addPair(names, "CAT", id, name);
  for (const { id, name } of list?.vendors ?? []) addPair(names, "VEN", id, name);
  for (const [id, name] of Object.entries(list?.specialFeatures ?? {}))
    names[`PRIVACY_FEAT_${kSpecialFeatures + 2 * Number(id)}`] = name;
  return names;
}

/** IDs of the vendors that were not deleted, ascending. */
export function liveVendors(list) {
  const live = (list?.vendors ?? []).filter((vendor) => !vendor.deleted);
  return live.map(({ id }) => id).sort((a, b) => a - b);
}
