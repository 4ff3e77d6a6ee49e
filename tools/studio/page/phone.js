// The phone: the application's first screen, and the privacy center while that is open. The center's
// page is a frame of its own, so that the application's markup and looks stay out of the studio's.

import { act, post } from "./connection.js";
import { byId, element, onPress, setText } from "./dom.js";

let shown = ""; // which center of which process
let revision; // of the screen; the frame's page asks for what is new to it
let underWay = Promise.resolve(); // the event sent last
let leaving = false;

const kDisplayWidth = 390; // points

const mayOpen = (address) => /^(https?:\/\/|mailto:)/i.test(address);

// A page that asks what is new, when the center is gone already, has nothing to tell.
function isQuestion(event) {
  const { tap, set } = JSON.parse(event);
  return tap === undefined && set === undefined;
}

async function send(event) {
  const patch = await post("center/event", event, { isQuiet: isQuestion(event) });
  return JSON.stringify({ ...patch, open: patch.open?.filter(mayOpen) });
}

// For center.js in the frame.
globalThis.sendToCenter = (event) => {
  if (leaving) return Promise.resolve("{}"); // nothing is shown that it could change
  underWay = send(event);
  return underWay;
};

/** Leaves the center when everything that was tapped before has arrived. */
async function leave() {
  for (let seen; seen !== underWay;) {
    seen = underWay;
    await seen.catch(() => {});
    await new Promise((resolve) => { setTimeout(resolve); }); // the frame sends what waits behind it
  }
  if (leaving) return;
  leaving = true;
  if (!await act("center/dismiss")) leaving = false;
}

const frame = () => byId("center").querySelector("iframe");

function showFrame(center) {
  const takesFocus = byId("phone").contains(document.activeElement);
  revision = center.revision;
  byId("center").replaceChildren(
    element("iframe", { src: "/center/", title: "Privacy center" }));
  if (takesFocus) frame().addEventListener("load", () => frame()?.focus());
}

// The focus stays in the phone when what held it goes.
function change(key, center) {
  const hadFocus = byId("phone").contains(document.activeElement);
  if (center) showFrame(center);
  else byId("center").replaceChildren();
  shown = key;
  leaving = false;
  byId("home").hidden = Boolean(center);
  byId("center").hidden = !center;
  byId("center-done").hidden = !center || center.closesItself;
  byId("print").disabled = !center;
  setText(byId("phone-title"), center ? "Privacy" : "Harbour Weekly");
  byId("phone-application").hidden = !center;
  if (hadFocus && !center) byId("phone").querySelector(".sheet:not([hidden]) [data-open]").focus();
}

export function wirePhone() {
  for (const button of document.querySelectorAll("[data-open]"))
    onPress(button, () => act("center/open", {
      width: kDisplayWidth,
      first: Number(byId("first").value),
      pushed: byId("how").value === "push",
    }));
  byId("center-done").addEventListener("click", leave);
  new ResizeObserver(([{ contentRect }]) =>
    byId("center").style.setProperty("--scale", contentRect.width / kDisplayWidth)).observe(byId("display"));
  byId("print").addEventListener("click", () => frame().contentWindow.print());
}

export function renderPhone({ application, process, session }) {
  const center = process?.running ? application?.center : null;
  const key = center ? `${process.launches}/${center.number}` : "";
  if (key !== shown) change(key, center);
  else if (center && center.revision !== revision) {
    revision = center.revision;
    frame().contentWindow.updateCenter?.();
  }
  if (center) setText(byId("center-done"), center.saveButton ?? "Done");
  for (const button of document.querySelectorAll("[data-open]"))
    button.disabled = !process?.running;
  byId("presentation").hidden = !session.iab;
}
