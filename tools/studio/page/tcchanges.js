// What a TC string says otherwise than the one before it, field by field.

import { element } from "./dom.js";
import { restrictionTypes } from "./vendorlist.js";

const kMostNamed = 12;

/** The sets of a model, [title, members], each member by the text that names it. */
function setsOf({ Core: core, PublisherTC: publisher, DisclosedVendors: disclosed, AllowedVendors: allowed }, names) {
  const restrictions = core.PubRestrictions.flatMap(({ PurposeId, RestrictionType, Vendors }) =>
    Vendors.map((id) => `${names.purpose(PurposeId)}: ${restrictionTypes[RestrictionType]} for ${names.vendor(id)}`));
  return [
    ["Purposes, consent", core.PurposesConsent.map(names.purpose)],
    ["Purposes, legitimate interest", core.PurposesLITransparency.map(names.purpose)],
    ["Special features", core.SpecialFeatureOptIns.map(names.specialFeature)],
    ["Vendors, consent", core.VendorConsent.Vendors.map(names.vendor)],
    ["Vendors, legitimate interest", core.VendorLegitimateInterest.Vendors.map(names.vendor)],
    ["Publisher restrictions", restrictions],
    ["Publisher’s purposes, consent", (publisher?.PubPurposesConsent ?? []).map(names.purpose)],
    ["Publisher’s purposes, legitimate interest", (publisher?.PubPurposesLITransparency ?? []).map(names.purpose)],
    ["Disclosed vendors", (disclosed?.Vendors ?? []).map(names.vendor)],
    ["Allowed vendors", (allowed?.Vendors ?? []).map(names.vendor)],
  ];
}

function listed(tag, sign, members) {
  if (members.length === 0) return [];
  const item = (member) => element("li", {}, element(tag, { text: `${sign} ${member}` }));
  const first = members.slice(0, kMostNamed).map(item);
  const rest = members.slice(kMostNamed);
  if (rest.length === 0) return first;
  return [...first, element("li", {}, element("details", {},
    element("summary", { text: `${sign} ${rest.length} more` }), element("ul", {}, ...rest.map(item))))];
}

function changeOfSet([title, now], [, before]) {
  const [known, kept] = [new Set(before), new Set(now)];
  const added = now.filter((member) => !known.has(member));
  const removed = before.filter((member) => !kept.has(member));
  if (added.length + removed.length === 0) return [];
  return [element("li", {}, element("h4", { text: title }),
    element("ul", {}, ...listed("ins", "+", added), ...listed("del", "\u2212", removed)))];
}

function changeOfField([title, now], before) {
  if (now === before) return [];
  return [element("li", {}, element("h4", { text: title }),
    element("p", {}, element("del", { text: String(before ?? "none") }), " \u2192 ",
      element("ins", { text: String(now ?? "none") })))];
}

/** The changes between two models, as list items; `fields` gives the [title, value] of what is no set. */
export function changesBetween(now, before, fields, names) {
  const values = new Map(fields(before));
  const titles = new Map(fields(now));
  for (const title of values.keys()) if (!titles.has(title)) titles.set(title, undefined);
  const earlier = setsOf(before, names);
  return [
    ...setsOf(now, names).flatMap((set, index) => changeOfSet(set, earlier[index])),
    ...[...titles].flatMap((field) => changeOfField(field, values.get(field[0]))),
  ];
}
