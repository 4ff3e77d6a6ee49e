// The widths of the outer columns, moved by the dividers beside them.

import { byId } from "./dom.js";

const kName = "widths of the panes";
const kNarrowest = 260; // points
const kWidest = 620;
const kStep = 16;

function kept() {
  try { return JSON.parse(localStorage.getItem(kName)) ?? {}; } catch { return {}; }
}

function keep(pane, width) {
  try { localStorage.setItem(kName, JSON.stringify({ ...kept(), [pane]: width })); } catch { /* until the page is left */ }
}

const setWidth = (pane, width) => document.documentElement.style.setProperty(`--${pane}`, width ? `${width}px` : "");

function wireDivider(divider) {
  const pane = divider.getAttribute("aria-controls");
  const grows = pane === "left" ? 1 : -1; // with the divider going right
  const width = () => Math.round(byId(pane).getBoundingClientRect().width);
  const show = () => { divider.ariaValueNow = Math.max(kNarrowest, Math.min(width(), kWidest)); };

  function move(wanted) {
    const limited = Math.max(kNarrowest, Math.min(wanted, kWidest));
    setWidth(pane, limited);
    keep(pane, width()); // the window may leave less room
  }
  function reset() {
    setWidth(pane);
    keep(pane);
  }

  divider.ariaValueMin = kNarrowest;
  divider.ariaValueMax = kWidest;
  setWidth(pane, Number(kept()[pane]));
  new ResizeObserver(show).observe(byId(pane));
  divider.addEventListener("keydown", (event) => {
    const moves = {
      ArrowLeft: () => move(width() - grows * kStep),
      ArrowRight: () => move(width() + grows * kStep),
      Home: () => move(kNarrowest),
      End: () => move(kWidest),
      Enter: reset,
    };
    if (!moves[event.key]) return;
    event.preventDefault();
    moves[event.key]();
  });
  divider.addEventListener("dblclick", reset);
  divider.addEventListener("pointerdown", (event) => {
    if (event.button !== 0) return;
    event.preventDefault();
    divider.focus();
    divider.setPointerCapture(event.pointerId);
    const from = grows * event.clientX - width();
    const follow = ({ clientX }) => move(grows * clientX - from);
    divider.addEventListener("pointermove", follow);
    divider.addEventListener("lostpointercapture", () => divider.removeEventListener("pointermove", follow), { once: true });
  });
}

export function wirePanes() {
  for (const divider of document.querySelectorAll(".divider")) wireDivider(divider);
}
