// The stored TC string, decoded: every field, with the names of the vendor list in force.

import { byId, dateAndTime, element, fillList, setText } from "./dom.js";
import { changesBetween } from "./tcchanges.js";
import { kNowhere, liveVendors, restrictionTypes } from "./vendorlist.js";

let shown = "";
let vendorRows = []; // of the string and list that are shown
let tableIsFilled = false;

const count = (number, one) => `${number} ${one}${number === 1 ? "" : "s"}`;
const yesOrNo = (value) => (value ? "yes" : "no");
const time = (text) => dateAndTime(Date.parse(text));
const inAscendingOrder = (...lists) => [...new Set(lists.flat())].sort((a, b) => a - b);

function mark(on) {
  return element("td", { class: "mark", "data-on": on, text: yesOrNo(on) });
}

function row(id, name, marks) {
  return element("tr", {}, element("th", { scope: "row" }, element("span", { class: "id", text: id }), name ?? kNowhere),
    ...marks.map(mark));
}

/** Rows for what the list names and the string holds, with a mark for each set of the string. */
function fillTable(table, names, ...sets) {
  const ids = inAscendingOrder(Object.keys(names).map(Number).filter(Number.isInteger), ...sets);
  table.tBodies[0].replaceChildren(
    ...ids.map((id) => row(id, names[id], sets.map((set) => set.includes(id)))));
}

function fields({ Core: core }) {
  return [
    ["Version", 2],
    ["Created", time(core.Created)],
    ["Last updated", time(core.LastUpdated)],
    ["CMP ID", core.CmpId],
    ["CMP version", core.CmpVersion],
    ["Consent screen", core.ConsentScreen],
    ["Consent language", core.ConsentLanguage],
    ["Publisher country", core.PublisherCC],
    ["Vendor list version", core.VendorListVersion],
    ["Policy version", core.TcfPolicyVersion],
    ["Service specific", yesOrNo(core.IsServiceSpecific)],
    ["Non-standard stacks", yesOrNo(core.UseNonStandardStacks)],
    ["Purpose one treatment", yesOrNo(core.PurposeOneTreatment)],
    ["Greatest vendor, consent", core.VendorConsent.MaxVendorId],
    ["Greatest vendor, legitimate interest", core.VendorLegitimateInterest.MaxVendorId],
  ];
}

const listed = (ids) => (ids.length === 0 ? "none" : ids.join(", "));

/** What the other segments hold. */
function segments({ DisclosedVendors: disclosed, AllowedVendors: allowed, PublisherTC: publisher }) {
  const rows = [];
  if (publisher)
    rows.push(["Publisher's purposes, consent", listed(publisher.PubPurposesConsent)],
      ["Publisher's purposes, legitimate interest", listed(publisher.PubPurposesLITransparency)],
      ["Publisher's own purposes", publisher.NumCustomPurposes],
      ["Own purposes, consent", listed(publisher.CustomPurposesConsent)],
      ["Own purposes, legitimate interest", listed(publisher.CustomPurposesLITransparency)]);
  if (disclosed) rows.push(["Disclosed vendors", listed(disclosed.Vendors)]);
  if (allowed) rows.push(["Allowed vendors", listed(allowed.Vendors)]);
  return rows.length > 0 ? rows : [["Other segments", "none"]];
}

function restriction({ PurposeId: purpose, RestrictionType: type, Vendors: vendors }, list, vendorNames) {
  const names = vendors.map((id) => vendorNames.get(id) ?? `${id} (${kNowhere.toLowerCase()})`);
  return element("li", {}, element("details", {},
    element("summary", { text: `${purpose} ${list.purposes[purpose] ?? kNowhere}: ${restrictionTypes[type]} ` +
      `for ${count(names.length, "vendor")}` }),
    element("p", { text: names.join(", ") })));
}

function setVendors({ Core: core }, list, vendorNames) {
  const consent = new Set(core.VendorConsent.Vendors);
  const legitimate = new Set(core.VendorLegitimateInterest.Vendors);
  vendorRows = inAscendingOrder(liveVendors(list), [...consent], [...legitimate])
    .map((id) => ({ id, name: vendorNames.get(id), marks: [consent.has(id), legitimate.has(id)] }));
  setText(byId("tc-vendor-count"), `${consent.size} with consent, ${legitimate.size} with legitimate ` +
    `interest, of ${vendorRows.length}`);
  tableIsFilled = false;
  fillVendors();
}

// Not before it is looked at: there may be a thousand.
function fillVendors() {
  if (!byId("tc-vendors").open) return;
  if (!tableIsFilled)
    byId("tc-vendor-table").tBodies[0].replaceChildren(
      ...vendorRows.map(({ id, name, marks }) => row(id, name, marks)));
  tableIsFilled = true;
  const wanted = byId("tc-search").value.trim().toLowerCase();
  let found = 0;
  for (const [index, { id, name }] of vendorRows.entries()) {
    const matches = `${id} ${name ?? ""}`.toLowerCase().includes(wanted);
    byId("tc-vendor-table").tBodies[0].rows[index].hidden = !matches;
    found += matches;
  }
  setText(byId("tc-found"), wanted === "" ? "" : `${found} found`);
}

// Why there may be no purposes: without a screen they come from named vendors alone.
function note({ Core: core }, configuration) {
  const hasPurposes = core.PurposesConsent.length + core.PurposesLITransparency.length > 0;
  return hasPurposes || core.VendorConsent.Vendors.length === 0 || configuration.vendors ? ""
    : "No purposes: the privacy configuration names no vendors, and without a screen only named " +
      "vendors bring their purposes along. Tick “Name the list’s vendors” under Configuration, " +
      "publish, relaunch and accept again.";
}

function renderModel(model, list, configuration) {
  fillList(byId("tc-fields"), fields(model));
  fillTable(byId("tc-purposes"), list.purposes, model.Core.PurposesConsent, model.Core.PurposesLITransparency);
  fillTable(byId("tc-features"), list.specialFeatures, model.Core.SpecialFeatureOptIns);
  setText(byId("tc-note"), note(model, configuration));
  const vendorNames = new Map(list.vendors.map(({ id, name }) => [id, name]));
  setVendors(model, list, vendorNames);
  const restrictions = model.Core.PubRestrictions;
  byId("tc-restrictions").replaceChildren(...(restrictions.length > 0
    ? restrictions.map((each) => restriction(each, list, vendorNames)) : [element("li", { text: "None" })]));
  fillList(byId("tc-segments"), segments(model));
}

const bitsOf = ({ bits }) => (!bits ? "" : bits[0] === bits[1] ? `, bit ${bits[0]}` : `, bits ${bits[0]} to ${bits[1]}`);

/** What a validator of today says: the rules that the string breaks, each with its source. */
function renderFindings(findings) {
  let section = byId("tc-findings");
  if (!section) {
    section = element("section", { id: "tc-findings", "aria-labelledby": "tc-findings-heading" },
      element("h3", { id: "tc-findings-heading", text: "Rules in force" }),
      element("details", {}, element("summary"), element("ul")));
    byId("tc-decoded").append(section);
  }
  setText(section.querySelector("summary"), findings.length === 0 ? "None is broken" : count(findings.length, "finding"));
  section.querySelector("ul").replaceChildren(...findings.map((finding) => element("li", {},
    `${finding.field}${bitsOf(finding)}: ${finding.what}`, element("p", { class: "hint", text: finding.source }))));
}

/** The changes between the models of two strings, as list items. */
export function changesOfStrings(model, before, list) {
  const vendorNames = new Map(list.vendors.map(({ id, name }) => [id, name]));
  const named = (nameOf) => (id) => `${id} ${nameOf(id) ?? `(${kNowhere.toLowerCase()})`}`;
  return changesBetween(model, before, (each) => [...fields(each), ["Publisher TC segment", yesOrNo(each.PublisherTC)]], {
    purpose: named((id) => list.purposes[id]),
    specialFeature: named((id) => list.specialFeatures[id]),
    vendor: named((id) => vendorNames.get(id)),
  });
}

function renderChange({ model, before }, list) {
  byId("tc-change").hidden = !model || !before?.model;
  if (!byId("tc-change").hidden)
    byId("tc-changes").replaceChildren(...changesOfStrings(model, before.model, list));
}

function describeList(list, served) {
  if (!list) return "The vendor list has not arrived yet.";
  const older = served && served.version < list.version
    ? ` The backend serves version ${served.version}, which is older and not taken; Reset takes it.` : "";
  return `Vendor list version ${list.version}, ${count(liveVendors(list).length, "vendor")} and ` +
    `${list.vendors.length - liveVendors(list).length} deleted.${older}`;
}

export function wireTCString() {
  byId("tc-vendors").addEventListener("toggle", fillVendors);
  byId("tc-search").addEventListener("input", fillVendors);
}

export function renderTCString({ application, session }) {
  byId("tab-tc").hidden = !session.iab;
  if (!session.iab && !byId("panel-tc").hidden) byId("tab-timeline").click();
  if (!session.iab || !application?.configuration) return;
  const { tcString, vendorList, configuration } = application;
  const key = JSON.stringify([tcString, vendorList, configuration.vendors]);
  if (key === shown) return;
  shown = key;
  setText(byId("tc-list"), describeList(vendorList, session.vendorList));
  byId("tc-empty").hidden = Boolean(tcString);
  byId("tc-stored").hidden = !tcString;
  byId("tc-decoded").hidden = !tcString?.model;
  setText(byId("tc-string"), tcString?.text ?? "");
  setText(byId("tc-length"), count(tcString?.text.length ?? 0, "character"));
  setText(byId("tc-problem"), tcString?.problem ? `It cannot be decoded: ${tcString.problem}` : "");
  const list = vendorList ?? { purposes: {}, specialFeatures: {}, vendors: [] };
  if (tcString?.model) {
    renderModel(tcString.model, list, configuration);
    renderFindings(tcString.findings);
  }
  renderChange(tcString ?? {}, list);
}
