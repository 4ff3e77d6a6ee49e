// The privacy configuration as its publisher edits it.

import { byId, element, onPress, setText } from "./dom.js";
import { act, showProblem } from "./connection.js";
import { lintSoon } from "./findings.js";
import { draftOf, keepDraft, objectIn, replaceText, showStatus, textOf } from "./document.js";
import { askAndPublish, wirePublishing } from "./publishing.js";
import { liveVendors, vendorIn, vendorText } from "./vendorlist.js";

const kPublished = "/api/configuration";
const kMostNamed = 12;
const kHighestVersion = 2 ** 31 - 1;
let publishedText = "";
let publishedVersion = 0;
let begunWith = 0; // the version that is edited
let store; // of the installation that is edited for
let isIAB = false; // is its mode
let vendorList;
const editor = byId("editor");
const status = byId("editor-status");

/** The document in the editor, or undefined with the reason in the status line. */
function parsed() {
  try {
    return objectIn(editor.value);
  } catch (error) {
    showStatus(status, error.message, "bad");
    return undefined;
  }
}

/** The IDs of the vendors that the document names. */
const namedIn = ({ information }) => String(information?.vendors ?? "").split(",")
  .map((text) => text.trim()).filter((text) => text !== "");

function showNamed(named) {
  const more = named.length - kMostNamed;
  byId("named-vendors").replaceChildren(...named.slice(0, kMostNamed).map((id) => {
    const text = vendorText(vendorList, Number(id));
    const button = element("button", { type: "button", class: "chip", "aria-label": `Do not name ${text}` },
      element("span", { text }));
    button.addEventListener("click", () => edit(nameVendors(named.filter((each) => each !== id))));
    return element("li", {}, button);
  }), ...(more > 0 ? [element("li", { text: `and ${more} more` })] : []));
}

function check() {
  lintSoon();
  const document = parsed();
  for (const id of ["publish", "add-category", "format", "flag-significant", "flag-reset", "flag-vendors"])
    byId(id).disabled = !document;
  if (!document) return;
  const information = document.information ?? {};
  byId("flag-significant").checked = ["true", "True", "1"].includes(information.significantChanges);
  byId("flag-reset").checked = editor.value.includes("resetSave");
  const named = namedIn(document);
  byId("flag-vendors").checked = named.length > 0;
  showNamed(named);
  const asked = Number.isInteger(information.version) ? information.version : 0; // a text counts as none
  const next = asked > publishedVersion && asked <= kHighestVersion ? asked : publishedVersion + 1;
  showStatus(status, editor.value === publishedText
    ? `Version ${publishedVersion} is published.`
    : `Edited. Publishes as version ${next}.`);
}

function changed() {
  if (editor.value === publishedText) begunWith = publishedVersion;
  keepDraft("configuration", store, editor.value, publishedText, begunWith);
  check();
}

function edit(change) {
  const document = parsed();
  if (!document) return;
  document.information ??= {};
  change(document);
  replaceText(editor, textOf(document));
  changed();
}

function addCategory(document) {
  const categories = (document.categories ??= []);
  const ids = categories.flatMap((category) => [category, ...(category.subcategories ?? [])])
    .map((category) => Number(category.ID) || 0);
  const id = String(Math.max(49, ...ids) + 1);
  categories.push({ ID: id, name: `New category ${id}`, description: "What it is for." });
}

function flag(key, on) {
  return (document) => {
    if (on) document.information[key] = "true";
    else delete document.information[key];
  };
}

function nameVendors(ids) {
  return (document) => {
    if (ids.length > 0) document.information.vendors = ids.join(",");
    else delete document.information.vendors;
  };
}

function nameVendor(event) {
  event.preventDefault();
  const vendor = vendorIn(byId("vendor").value);
  if (!(vendor > 0)) return showProblem("Say the vendor's ID, or choose one by its name.");
  byId("vendor").value = "";
  return edit((document) => nameVendors([...new Set([...namedIn(document), String(vendor)])])(document));
}

async function publish() {
  const [text, whose] = [editor.value, store];
  const edition = await askAndPublish(text, begunWith, isIAB);
  if (!edition || store !== whose) return;
  publishedText = edition.text;
  if (editor.value === text) replaceText(editor, publishedText);
  changed();
  begunWith = edition.version;
}

async function fetched(path) {
  const response = await fetch(path).catch(() => undefined);
  if (response?.ok) return response.text();
  showProblem("The studio does not answer.");
  return undefined;
}

/** Puts a document in the place of what is typed; undo brings that back. */
async function load(path) {
  const whose = store;
  const text = await fetched(path);
  if (text === undefined || store !== whose) return;
  if (path === kPublished) publishedText = text;
  replaceText(editor, text);
  changed();
}

/** Takes up a new edition, unless something is typed that it would replace. */
async function takeUp() {
  const [before, whose] = [publishedText, store];
  const text = (await fetched(kPublished)) ?? before;
  if (store !== whose) return;
  publishedText = text;
  if (editor.value === before) {
    editor.value = publishedText;
    begunWith = publishedVersion;
  }
  check();
}

/** Shows what was typed for this installation and not published, else what is. */
async function changeInstallation() {
  const whose = store;
  editor.readOnly = true; // what is typed before it is there would take the draft's place
  const text = (await fetched(kPublished)) ?? "";
  if (store !== whose) return;
  publishedText = text;
  editor.readOnly = false;
  const draft = draftOf("configuration", store) ?? { text: publishedText, version: publishedVersion };
  editor.value = draft.text;
  begunWith = draft.version;
  check();
}

export function wireEditor() {
  editor.addEventListener("input", changed);
  byId("flag-significant").addEventListener("change", (event) =>
    edit(flag("significantChanges", event.target.checked)));
  byId("flag-reset").addEventListener("change", (event) => edit(flag("resetSave", event.target.checked)));
  byId("flag-vendors").addEventListener("change", (event) => edit(nameVendors(event.target.checked ? liveVendors(vendorList) : [])));
  byId("name-vendor").addEventListener("submit", nameVendor);
  byId("add-category").addEventListener("click", () => edit(addCategory));
  byId("format").addEventListener("click", () => edit(() => {}));
  byId("sample").addEventListener("click", () => load("/api/sample"));
  byId("revert").addEventListener("click", () => load(kPublished));
  onPress(byId("publish"), () => publish().catch(() => {}));
  onPress(byId("come-back"), () => act("relaunch"));
  wirePublishing();
}

// Whether the application would find something new if it started again.
function offerRelaunch({ application, playback }) {
  const has = application?.configuration.version ?? 0;
  byId("come-back").hidden = !application || Boolean(playback?.played) || has >= publishedVersion;
  setText(byId("come-back"), `Relaunch with version ${publishedVersion}`);
}

/** Another page may have published: what is being edited here stays. */
export function renderEditor(state) {
  const { published, session, application } = state;
  byId("tab-editor").hidden = session.live;
  vendorList = application?.vendorList;
  if (!published || published.iab !== session.iab) return; // between two modes
  const isNew = published.version !== publishedVersion;
  publishedVersion = published.version;
  offerRelaunch(state);
  if (!isNew && session.store === store) return;
  byId("published").textContent = `v${publishedVersion}`;
  isIAB = published.iab;
  byId("named").hidden = !isIAB;
  byId("add-category").hidden = published.iab;
  if (session.store !== store) {
    store = session.store;
    changeInstallation();
  } else {
    takeUp();
  }
}
