// Runs of a long list, which are laid out only near the view.

const sheet = new CSSStyleSheet();
document.adoptedStyleSheets.push(sheet);

const isLaidOut = (run) => run.firstElementChild.checkVisibility({ contentVisibilityAuto: true });

const widths = new WeakMap(); // of the lists, when they were measured

/** Takes what is out of sight in the list to be as high as what is in sight: once for each width. */
export function measureRuns(list) {
  if (widths.get(list) === list.clientWidth) return;
  const runs = [...list.querySelectorAll(".run")].filter(isLaidOut);
  if (runs.length === 0) return;
  widths.set(list, list.clientWidth);
  const sum = (numberOf) => runs.reduce((all, run) => all + numberOf(run), 0);
  const height = sum((run) => run.offsetHeight);
  const row = height / sum((run) => run.childElementCount);
  sheet.replaceSync(`.run { contain-intrinsic-block-size: auto ${height / runs.length}px; --row: ${row}px }`);
}

// What the user wants to see of a list: its beginning or end, which move while it scrolls there, as rows
// come into sight that are higher or lower than they were taken for.
let aim;
const settling = 5; // frames

const distance = ({ list, key }) =>
  (key === "End" ? list.scrollHeight - list.clientHeight : 0) - list.scrollTop;

function settle(frames) {
  if (!aim) return;
  const rest = distance(aim);
  const isThere = Math.abs(rest) <= 1; // heights are told in whole points
  if (!isThere) aim.list.scrollBy(0, rest);
  if (frames > 0) requestAnimationFrame(() => settle(isThere ? frames - 1 : settling));
  else aim = undefined;
}

/** Has the list come to rest where the key leads, Home or End; any other drops what was wanted. */
export function aimAt(list, key) {
  aim = list && ["Home", "End"].includes(key) ? { list, key } : undefined;
}

for (const other of ["wheel", "pointerdown"])
  document.addEventListener(other, () => aimAt(), { passive: true });
document.addEventListener("scrollend", ({ target }) => {
  if (target === aim?.list) settle(settling);
}, true);
