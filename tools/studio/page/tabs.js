// Tabs after the usual pattern: arrow keys move, the panel of the chosen one is shown.

import { byId } from "./dom.js";

function choose(tabs, chosen) {
  for (const tab of tabs) {
    const selected = tab === chosen;
    tab.setAttribute("aria-selected", String(selected));
    tab.tabIndex = selected ? 0 : -1;
    byId(tab.getAttribute("aria-controls")).hidden = !selected;
  }
}

export function wireTabs(list) {
  const tabs = [...list.querySelectorAll('[role="tab"]')];
  const steps = { ArrowRight: 1, ArrowLeft: -1 };
  for (const tab of tabs) {
    tab.addEventListener("click", () => choose(tabs, tab));
    tab.addEventListener("keydown", (event) => {
      const step = steps[event.key];
      if (!step) return;
      const shown = tabs.filter((each) => !each.hidden);
      const next = shown[(shown.indexOf(tab) + step + shown.length) % shown.length];
      choose(tabs, next);
      next.focus();
    });
  }
}
