// The privacy configuration as its publisher edits it.

import { byId } from "./dom.js";
import { act, post, showProblem } from "./connection.js";
import { lintSoon } from "./findings.js";
import { liveVendors } from "./vendorlist.js";

let publishedText = "";
let publishedVersion = 0;
let publishedFor; // IAB mode or not
let vendorList;
const drafts = new Map(); // of the mode that is not on
const editor = byId("editor");

/** The document in the editor, or undefined with the reason in the status line. */
function parsed() {
  try {
    const document = JSON.parse(editor.value);
    if (document === null || typeof document !== "object" || Array.isArray(document))
      throw new SyntaxError("the document must be an object");
    return document;
  } catch (error) {
    showStatus(error.message, "bad");
    return undefined;
  }
}

function showStatus(text, tone) {
  const status = byId("editor-status");
  status.textContent = text;
  status.dataset.tone = tone;
}

function check() {
  lintSoon();
  const document = parsed();
  for (const id of ["publish", "publish-relaunch", "add-category", "format", "flag-significant", "flag-reset", "flag-vendors"])
    byId(id).disabled = !document;
  if (!document) return;
  const information = document.information ?? {};
  byId("flag-significant").checked = ["true", "True", "1"].includes(information.significantChanges);
  byId("flag-reset").checked = editor.value.includes("resetSave");
  byId("flag-vendors").checked = Boolean(information.vendors);
  const next = Math.max(publishedVersion + 1, Number(information.version) || 0);
  showStatus(editor.value === publishedText
    ? `Version ${publishedVersion} is published.`
    : `Edited. Publishes as version ${next}.`, "neutral");
}

function edit(change) {
  const document = parsed();
  if (!document) return;
  document.information ??= {};
  change(document);
  editor.value = `${JSON.stringify(document, null, 2)}\n`;
  check();
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

function nameVendors(on) {
  return (document) => {
    if (on) document.information.vendors = liveVendors(vendorList).join(",");
    else delete document.information.vendors;
  };
}

async function publish() {
  const { text } = await post("configuration", editor.value);
  publishedText = text;
  editor.value = text;
  check();
}

/** Puts a document into the editor, unless something is typed meanwhile; gives its text. */
async function load(path) {
  const before = editor.value;
  const response = await fetch(path).catch(() => undefined);
  if (!response?.ok) return showProblem("The studio does not answer.");
  const text = await response.text();
  if (editor.value === before) editor.value = text;
  check();
  return text;
}

async function revert() {
  publishedText = (await load("/api/configuration")) ?? publishedText;
  check();
}

/** Leaves what is typed for this mode, and takes up what was for the other. */
async function changeMode(iab) {
  if (editor.value !== publishedText) drafts.set(publishedFor, editor.value);
  publishedFor = iab;
  await revert();
  editor.value = drafts.get(iab) ?? editor.value;
  drafts.delete(iab);
  check();
}

export function wireEditor() {
  editor.addEventListener("input", check);
  byId("flag-significant").addEventListener("change", (event) =>
    edit(flag("significantChanges", event.target.checked)));
  byId("flag-reset").addEventListener("change", (event) => edit(flag("resetSave", event.target.checked)));
  byId("flag-vendors").addEventListener("change", (event) => edit(nameVendors(event.target.checked)));
  byId("add-category").addEventListener("click", () => edit(addCategory));
  byId("format").addEventListener("click", () => edit(() => {}));
  byId("sample").addEventListener("click", () => load("/api/sample"));
  byId("revert").addEventListener("click", revert);
  byId("publish").addEventListener("click", () => publish().catch(() => {}));
  byId("publish-relaunch").addEventListener("click", () =>
    publish().then(() => act("relaunch")).catch(() => {}));
}

/** Another page may have published: what is being edited here stays. */
export function renderEditor({ published, session, application }) {
  byId("tab-editor").hidden = session.live;
  vendorList = application?.vendorList;
  if (!published || (published.version === publishedVersion && published.iab === publishedFor)) return;
  publishedVersion = published.version;
  byId("published").textContent = `v${publishedVersion}`;
  byId("flag-vendors-label").hidden = !published.iab;
  byId("add-category").hidden = published.iab;
  if (published.iab !== publishedFor) changeMode(published.iab);
  else if (editor.value === publishedText) revert();
  else check();
}
