// Small helpers over the document. Every text goes in as text, never as markup.

export const byId = (id) => document.getElementById(id);

/** An element with properties ({class, text, title, ...}) and children. */
export function element(tag, properties = {}, ...children) {
  const node = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name === "text") node.textContent = value;
    else if (value !== undefined && value !== null) node.setAttribute(name, value);
  }
  node.append(...children);
  return node;
}

/** Sets text only where it differs, so that nothing is announced twice. */
export function setText(node, text) {
  if (node.textContent !== text) node.textContent = text;
}

/** The rows of a definition list: [name, value, class]. */
export function fillList(list, rows) {
  list.replaceChildren(...rows.map(([name, value, kind]) =>
    element("div", {}, element("dt", { text: name }), element("dd", { text: String(value), class: kind }))));
}

/** Does it when the button is pressed, but not again while it is under way; the button shows that. */
export function onPress(button, action) {
  button.addEventListener("click", async () => {
    if (button.ariaBusy === "true") return;
    button.ariaBusy = "true";
    try { await action(); } finally { button.ariaBusy = "false"; }
  });
}

const two = (number) => String(number).padStart(2, "0");

export function timeOfDay(milliseconds) {
  const time = new Date(milliseconds);
  return `${two(time.getHours())}:${two(time.getMinutes())}:${two(time.getSeconds())}.` +
    String(time.getMilliseconds()).padStart(3, "0");
}

export function dateAndTime(milliseconds) {
  return new Date(milliseconds).toLocaleString(undefined, { dateStyle: "medium", timeStyle: "medium" });
}

export function day(milliseconds) {
  return new Date(milliseconds).toLocaleDateString(undefined, { dateStyle: "medium" });
}
