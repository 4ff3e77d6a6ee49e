// The field that searches by name a list that is all of its screen.

import { announce } from "./notices.js";

const find = document.getElementById("find");
const field = find.querySelector("input");
const [found, nothing] = find.querySelectorAll("p");
const wholeList = document.getElementById("whole-list");
const screen = document.querySelector(".screen");

const silence = 400; // milliseconds, in which a screen reader says the letters that are typed

// Letters that are another's with a stroke, and have no accent to take off.
const strokes = { Ø: "O", Ł: "L", Đ: "D", Ħ: "H", Æ: "AE", Œ: "OE" };

// As one compares names: capitals, also for ς and ß, without accents.
const plain = (text) => text.normalize("NFKD").replace(/\p{M}/gu, "").toLowerCase().toUpperCase()
  .replace(/[ØŁĐĦÆŒ]/g, (letter) => strokes[letter]);

const plainNames = new Map(); // of every name that was searched
function plainNameOf(row) {
  const name = row.querySelector("h1, h2, h3, h4, h5, h6")?.textContent ?? "";
  if (!plainNames.has(name)) plainNames.set(name, plain(name));
  return plainNames.get(name);
}

const filters = () => field.value.trim() !== "";

const isRun = (element) => element.matches(".run");
const rowsOf = (list) => [...list.children].flatMap((child) => (isRun(child) ? [...child.children] : child));

// What changes nothing is not said: the browser would look into it.
function setHidden(element, hidden) {
  if (element.hidden !== hidden) element.hidden = hidden;
}

// Hides the rows whose names lack a word, and tells how many are left.
function hideOthers(rows, words) {
  let matches = 0;
  for (const row of rows) {
    const name = words.length > 0 && plainNameOf(row);
    const matched = words.every((word) => name.includes(word));
    setHidden(row, !matched);
    if (matched) ++matches;
  }
  return matches;
}

/** Shows of the list, as it is now, what is searched for. Screens without one are left alone. */
export function searchAgain() {
  const list = screen.querySelector(".searchable");
  if (!list) return;
  const words = plain(field.value).split(/\s+/).filter(Boolean);
  const children = [...list.children];
  let matches = hideOthers(children.filter((child) => !isRun(child)), words);
  list.classList.toggle("filtered", words.length > 0);
  for (const run of children.filter(isRun)) {
    const shown = hideOthers(run.children, words);
    run.style.setProperty("--shown", shown);
    setHidden(run, shown === 0);
    matches += shown;
  }
  found.textContent = find.dataset.matches.replace("%1$@", matches)
    .replace("%2$@", rowsOf(list).length);
  nothing.hidden = matches > 0;
  wholeList.hidden = !filters();
}

// Names take longer than a letter may; they are read while the user has not typed yet.
field.addEventListener("focus", () => {
  const list = screen.querySelector(".searchable");
  if (list) rowsOf(list).forEach(plainNameOf);
});

let saying;
function sayOutcome() {
  const outcome = nothing.hidden ? found : nothing;
  announce(filters() ? `${outcome.textContent} ${wholeList.textContent}` : found.textContent);
}

field.addEventListener("input", () => {
  searchAgain();
  screen.querySelector(".scroll").scrollTo(0, 0);
  clearTimeout(saying);
  saying = setTimeout(sayOutcome, silence);
});

// The keyboard of a phone lies over what was found.
field.addEventListener("keydown", ({ key, isComposing }) => {
  if (key === "Enter" && !isComposing && matchMedia("(hover: none)").matches) field.blur();
});

/** Shows the whole list again; whether there was anything to clear. */
export function clearSearch() {
  const cleared = filters();
  field.value = "";
  if (!cleared) return false;
  searchAgain();
  clearTimeout(saying);
  sayOutcome();
  document.activeElement.scrollIntoView({ block: "nearest" });
  return true;
}

/** Another screen is shown: nothing is searched for. */
export function forgetSearch() {
  clearTimeout(saying);
  field.value = "";
  wholeList.hidden = true;
  searchAgain();
}

forgetSearch();
