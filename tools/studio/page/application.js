// What the application shows its user: the decision, and the banner when there is one to take.

import { byId, day, element, setText } from "./dom.js";

function settled(decision, engine) {
  const headline = engine.privacyState === 1 ? "Consent given" : "Consent refused";
  return [headline, `Saved on ${day(decision.savedAt)}, valid until ${day(decision.validUntil)}.`];
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

export function renderApplication({ application, process, session }) {
  const pill = byId("process");
  setText(pill, process?.running ? `Running, launch ${process.launches}` : "Not running");
  pill.dataset.tone = process?.running ? "good" : "bad";
  for (const button of document.querySelectorAll('[data-post="accept"], [data-post="refuse"]'))
    button.disabled = !process?.running;
  if (!application) return;
  renderDecision(application.decision, application.engine);
  renderBanner(application.decision, application.configuration, session.iab);
}
