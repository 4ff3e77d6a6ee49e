// What the application shows its user: the decision, and the banner when there is one to take.

import { byId, day, element, setText } from "./dom.js";

const kPatience = 300; // milliseconds; a usual start is over by then
let latest; // state
let waiting; // for the engine to start
let isLate = false;

function settled(decision, engine) {
  const headline = engine.privacyState === 1 ? "Consent given" : "Consent refused";
  return [headline, `Saved on ${day(decision.savedAt)}, valid until ${day(decision.validUntil)}.`];
}

function renderStarting() {
  setText(byId("decision-headline"), "Starting");
  setText(byId("decision-reason"), "The engine has not been started yet.");
  byId("decision").dataset.tone = "neutral";
}

function renderDecision(decision, engine) {
  const [headline, reason] = decision.mustAsk
    ? [decision.headline, decision.explanation] : settled(decision, engine);
  setText(byId("decision-headline"), headline);
  setText(byId("decision-reason"), reason);
  byId("decision").dataset.tone =
    decision.mustAsk ? "warn" : engine.privacyState === 1 ? "good" : "neutral";
}

function renderBanner(decision, configuration, iab) {
  const button = document.activeElement;
  const hadFocus = byId("banner").contains(button) || byId("no-banner").contains(button);
  byId("banner").hidden = !decision.mustAsk;
  byId("no-banner").hidden = decision.mustAsk;
  setText(byId("banner-content"), configuration.content ??
    `The privacy configuration has not arrived yet. A choice made now is saved without ${iab ? "texts" : "categories"}.`);
  const policy = configuration.policyText
    ? [element("span", { class: "link", title: configuration.policyURL, text: configuration.policyText })] : [];
  byId("banner-policy").replaceChildren(...policy);
  const shown = byId(decision.mustAsk ? "banner" : "no-banner");
  if (hadFocus && !shown.contains(button))
    shown.querySelector(`[data-post="${button.dataset.post}"], [data-open]`).focus();
}

// Until it tells how it stands, what stands is the process's before it.
function renderProcess({ running, begun, launches }) {
  const pill = byId("process");
  setText(pill, !running ? "Not running" : begun ? `Running, launch ${launches}` : `Starting, launch ${launches}`);
  pill.dataset.tone = !running ? "bad" : begun ? "good" : "warn";
  if (running && !begun) {
    waiting ??= setTimeout(() => { isLate = true; renderApplication(latest); }, kPatience);
  } else {
    clearTimeout(waiting);
    [waiting, isLate] = [undefined, false];
  }
  byId("starting").hidden = !isLate;
  setText(byId("starting"), `Launch ${launches} is starting. Below stands how the one before was left.`);
}

export function renderApplication(state) {
  latest = state;
  const { application, process, session } = state;
  if (process) renderProcess(process);
  for (const button of document.querySelectorAll('[data-post="accept"], [data-post="refuse"]'))
    button.disabled = !process?.running;
  if (!application) return;
  if (isLate) renderStarting();
  else renderDecision(application.decision, application.engine);
  renderBanner(application.decision, application.configuration, session.iab);
}
