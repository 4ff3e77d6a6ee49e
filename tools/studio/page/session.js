// The session as a script for `vxprivacy play`.

import { showProblem } from "./connection.js";
import { byId, element, onPress } from "./dom.js";

function save(blob, name) {
  const href = URL.createObjectURL(blob);
  element("a", { href, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(href));
}

async function exportSession() {
  const response = await fetch("/api/session").catch(() => undefined);
  if (response?.ok) return save(await response.blob(), "session.jsonl");
  const answer = await response?.json().catch(() => undefined);
  return showProblem(answer?.error ?? "The studio does not answer.");
}

export function wireSession() {
  onPress(byId("export"), exportSession);
}
