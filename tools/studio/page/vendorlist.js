// What the vendor list in force calls the numbers of the store and of the TC string.

// Of each item the store has two entries: the odd one is consent, the even one legitimate interest.
function addPair(names, { prefix, offset }, id, name) {
  const even = offset + 2 * Number(id);
  names[`${prefix}${even - 1}`] = `${name}: consent`;
  names[`${prefix}${even}`] = `${name}: legitimate interest`;
}

/** Names by key of the store. */
export function keyNames({ keys, purposes, vendors, specialFeatures }) {
  const names = {};
  for (const [id, name] of Object.entries(purposes)) addPair(names, keys.purposes, id, name);
  for (const { id, name } of vendors) addPair(names, keys.vendors, id, name);
  for (const [id, name] of Object.entries(specialFeatures)) // only the even one
    names[`${keys.specialFeatures.prefix}${keys.specialFeatures.offset + 2 * Number(id)}`] = name;
  return names;
}

/** IDs of the vendors that were not deleted, ascending. */
export function liveVendors(list) {
  const live = (list?.vendors ?? []).filter((vendor) => !vendor.deleted);
  return live.map(({ id }) => id).sort((a, b) => a - b);
}
