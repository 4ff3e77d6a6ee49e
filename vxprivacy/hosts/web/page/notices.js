// What the page itself has to say.

const alertRegion = document.getElementById("alert");
let shown = "";

/** Shows the notice with this id, a template; its button calls `action`. */
export function showAlert(id, action) {
  if (shown !== id) // or it would be read out again
    alertRegion.replaceChildren(document.getElementById(id).content.cloneNode(true));
  shown = id;
  alertRegion.querySelector("button").onclick = () => action();
}

export function clearAlert() {
  if (!shown) return;
  shown = "";
  alertRegion.replaceChildren();
}

/** Has a screen reader say it. */
export function announce(text) {
  document.getElementById("status").textContent = text;
}
