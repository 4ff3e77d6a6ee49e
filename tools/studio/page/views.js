// At a phone's width one column is shown at a time.

const main = document.querySelector("main");
const buttons = [...document.querySelectorAll("[data-view]")].filter((each) => each !== main);

function show(view) {
  main.dataset.view = view;
  for (const button of buttons) button.setAttribute("aria-pressed", String(button.dataset.view === view));
  scrollTo(0, 0);
}

export function wireViews() {
  for (const button of buttons) button.addEventListener("click", () => show(button.dataset.view));
  document.querySelector(".skip").addEventListener("click", () => show("centre"));
}
