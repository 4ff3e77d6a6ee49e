// A JSON document in a text area.

/** The object that the text holds; a SyntaxError says why there is none. */
export function objectIn(text) {
  if (text.startsWith("\uFEFF")) // which no reader sees
    throw new SyntaxError("the document begins with a byte order mark; delete its first, invisible character");
  const value = JSON.parse(text);
  if (value === null || typeof value !== "object" || Array.isArray(value))
    throw new SyntaxError("the document must be an object");
  return value;
}

export const textOf = (document) => `${JSON.stringify(document, null, 2)}\n`;

/** Puts a text in the place of another; undo brings that back where the field is shown. */
export function replaceText(field, text) {
  if (field.value === text) return;
  const focused = document.activeElement;
  field.focus({ preventScroll: true });
  field.select();
  if (document.activeElement !== field || !document.execCommand("insertText", false, text)) field.value = text;
  field.setSelectionRange(0, 0);
  focused?.focus({ preventScroll: true });
}

const draftName = (what, store) => `${what} of ${store}`;
const kNoDraft = "null";

/**
 * Keeps a text that is not published yet over reloads and restarts, for the installation, and over
 * which version it is written where there are any. Each tab has its own; a new one gets the last.
 */
export function keepDraft(what, store, text, published, version) {
  const name = draftName(what, store);
  try {
    const before = sessionStorage.getItem(name);
    const now = text === published ? kNoDraft : JSON.stringify({ text, version });
    sessionStorage.setItem(name, now);
    if (now !== kNoDraft) localStorage.setItem(name, now);
    else if (localStorage.getItem(name) === before) localStorage.removeItem(name); // not another tab's
  } catch { /* there is no room for it, or no leave */ }
}

/** What was kept, {text, version}, if anything was. */
export function draftOf(what, store) {
  const name = draftName(what, store);
  try {
    return JSON.parse(sessionStorage.getItem(name) ?? localStorage.getItem(name)) ?? undefined;
  } catch {
    return undefined;
  }
}

export function showStatus(status, text, tone = "neutral") {
  status.textContent = text;
  status.dataset.tone = tone;
}
