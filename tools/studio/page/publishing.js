// What a new edition changes and what it will do, before it is published.

import { act, post } from "./connection.js";
import { textOf } from "./document.js";
import { byId, element, setText } from "./dom.js";
import { hunks, lineDiff } from "./linediff.js";

const dialog = byId("publish-dialog");
let asked = 0;
let answer; // of the reader: to what the dialog asks

const orderly = (text) => textOf(JSON.parse(text));

const signs = { "+": "ins", "-": "del", " ": "span" };

function diffLine(line) {
  if (line === null) return element("span", { class: "gap", text: "\u22ef" });
  return element(signs[line.sign], { text: `${line.sign} ${line.text}` });
}

function showDiff(before, after) {
  byId("publish-diff").replaceChildren(...hunks(lineDiff(orderly(before), orderly(after))).map(diffLine));
}

// Whoever has not answered is asked at any rate.
function showEffect({ decision, callbacks, problem }) {
  if (problem) return setText(byId("publish-effect"), `It could not be tried: ${problem}.`);
  setText(byId("publish-effect"), decision.mustAsk
    ? `Users who have answered are asked again. ${decision.explanation}`
    : "Users who have answered are not asked again: their choices stay, and stand.");
  byId("publish-effect").dataset.tone = decision.mustAsk ? "warn" : "good";
  return setText(byId("publish-told"), callbacks.length === 0
    ? "The application is told nothing." : `The application is told: ${callbacks.join(", ")}.`);
}

function showOutcome(outcome, begunWith) {
  const { version, over } = outcome;
  setText(byId("publish-title"), `Publish version ${version}?`);
  showDiff(over.text, outcome.text);
  showEffect(outcome);
  byId("publish-conflict").hidden = over.version <= begunWith;
  setText(byId("publish-conflict"),
    `Version ${over.version} was published elsewhere while you were editing version ${begunWith}. ` +
    "What you publish takes its place; what it brought and yours has not stands below in red.");
}

function showWaiting() {
  setText(byId("publish-title"), "Publish?");
  setText(byId("publish-effect"), "An application of its own takes it up, to see\u2026");
  byId("publish-effect").dataset.tone = "neutral";
  setText(byId("publish-told"), "");
  byId("publish-conflict").hidden = true;
  byId("publish-diff").replaceChildren();
}

function allow(isAllowed) {
  for (const id of ["publish-only", "publish-relaunch"]) byId(id).disabled = !isAllowed;
}

/**
 * Asks whether to publish `text`, written over version `begunWith` in the mode said, and publishes it then. Resolves to
 * the edition, or to nothing when the reader thought better of it; rejects when it cannot be.
 */
export async function askAndPublish(text, begunWith, iab) {
  const number = (asked += 1);
  showWaiting();
  allow(false);
  dialog.showModal();
  const closed = new Promise((resolve) => { answer = resolve; });
  const outcome = await Promise.race([post("rehearse", text).catch(() => undefined), closed]);
  if (number !== asked) return undefined;
  if (!outcome) {
    dialog.close();
    return undefined;
  }
  showOutcome(outcome, begunWith);
  allow(true);
  const how = await closed;
  if (!how) return undefined;
  const edition = await post(`configuration?over=${outcome.over.version}&iab=${iab}`, text).catch((error) => {
    if (!error.isConflict) throw error;
  });
  if (!edition) return askAndPublish(text, begunWith, iab); // there is more to look at by now
  if (how === "relaunch") await act("relaunch");
  return edition;
}

export function wirePublishing() {
  const end = (how) => { answer?.(how); dialog.close(); };
  byId("publish-only").addEventListener("click", () => end("publish"));
  byId("publish-relaunch").addEventListener("click", () => end("relaunch"));
  byId("publish-cancel").addEventListener("click", () => dialog.close());
  dialog.addEventListener("close", () => {
    if (dialog.open) return; // it asks again already: the event comes with a frame
    answer?.(undefined);
    allow(false);
    asked += 1;
  });
}
