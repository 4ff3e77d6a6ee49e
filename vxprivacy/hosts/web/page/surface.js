// The page's side of a WebSurface: sends what the user does and shows what changed.
//
// A message channel is an object with send(event), which takes an event's text and gives a promise
// of the patch's text. An application may set globalThis.privacyChannel to its own before this
// module runs, or answer the web view's message handler "privacy"; else events are posted.

function webViewChannel() {
  const handler = globalThis.webkit?.messageHandlers?.privacy;
  return handler && { send: (event) => handler.postMessage(event) };
}

function postingChannel(address) {
  return {
    async send(event) {
      const answer = await fetch(address, {
        method: "POST",
        headers: { "Content-Type": "application/json" },
        body: event,
      });
      if (!answer.ok) throw new Error(`${address} answered ${answer.status}`);
      return answer.text();
    },
  };
}

const channel =
  globalThis.privacyChannel ??
  webViewChannel() ??
  postingChannel(document.documentElement.dataset.events);

const rules = new CSSStyleSheet();
document.adoptedStyleSheets = [...document.adoptedStyleSheets, rules];

// One event after the other, so that patches arrive in order.
let last = Promise.resolve();
function send(event) {
  last = last
    .then(() => channel.send(JSON.stringify(event)))
    .then((patch) => show(JSON.parse(patch)))
    .catch(takeBack);
}

// What did not arrive did not happen.
function takeBack(error) {
  console.error(error);
  for (const input of document.querySelectorAll(".switch")) input.checked = input.defaultChecked;
}

function show(patch) {
  const focused = document.activeElement?.id;
  for (const rule of patch.rules ?? []) rules.insertRule(rule, rules.cssRules.length);
  for (const markup of patch.own ?? []) showElement(markup, false);
  for (const markup of patch.whole ?? []) showElement(markup, true);
  for (const [id, [x, y]] of Object.entries(patch.scroll ?? {}))
    document.getElementById(id)?.scrollTo(x, y);
  for (const address of patch.open ?? []) window.open(address, "_blank", "noopener,noreferrer");
  if (focused && document.activeElement?.id !== focused) document.getElementById(focused)?.focus();
}

// The markup is the host's, every text in it escaped. Without `whole`, what a container holds stays.
function showElement(markup, whole) {
  const template = document.createElement("template");
  template.innerHTML = markup;
  const shown = template.content.firstElementChild;
  const element = document.getElementById(shown.id);
  if (!element) return;
  if (element.tagName !== shown.tagName) return element.replaceWith(shown);
  for (const name of element.getAttributeNames())
    if (!shown.hasAttribute(name)) element.removeAttribute(name);
  for (const { name, value } of shown.attributes)
    if (element.getAttribute(name) !== value) element.setAttribute(name, value);
  if (whole || !element.classList.contains("view")) element.replaceChildren(...shown.childNodes);
  if ("checked" in element) element.checked = shown.checked;
}

const operable = "button, input, [data-tap]";

document.addEventListener("click", ({ target }) => {
  const element = target.closest(operable);
  if (element) send({ tap: element.id });
});

document.addEventListener("keydown", (event) => {
  if (event.key === "Enter" && event.target.matches("input, [data-tap]")) event.target.click();
});

const pending = new Map();
function tellScroll(element) {
  pending.delete(element);
  send({ scroll: element.id, x: element.scrollLeft, y: element.scrollTop });
}

// Once the movement rests; "scroll" does not bubble.
document.addEventListener("scroll", ({ target: element }) => {
  if (!element.id) return;
  clearTimeout(pending.get(element));
  pending.set(element, setTimeout(tellScroll, 120, element));
}, true);

document.querySelector(".surface").inert = false; // nothing that is tapped is lost from here on
