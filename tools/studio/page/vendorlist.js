// What the vendor list in force calls the numbers of the store and of the TC string.

import { byId, element } from "./dom.js";

export const kNowhere = "Not in the vendor list";
export const restrictionTypes = ["not allowed", "consent required", "legitimate interest required"];

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

/** What a vendor is called, with its ID. */
export const vendorText = (list, id) => {
  const vendor = list?.vendors.find((each) => each.id === id);
  return vendor ? `${id} ${vendor.name}` : `${id} (not in the vendor list)`;
};

/** The ID of the vendor that a field names, by its number or as it is offered; NaN for none. */
export const vendorIn = (text) => Number.parseInt(text, 10);

let offered;
/** What the fields for a vendor offer. */
export function offerVendors(list) {
  if (list?.version === offered) return;
  offered = list?.version;
  byId("vendor-names").replaceChildren(...liveVendors(list).map((id) =>
    element("option", { value: vendorText(list, id) })));
}
