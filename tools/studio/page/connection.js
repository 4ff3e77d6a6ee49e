// The studio's requests, and what it tells.

import { byId, setText } from "./dom.js";
import { follow } from "./stream.js";

const token = document.querySelector('meta[name="studio-token"]').content;

/** Posts to /api/ACTION; says what went wrong, after the name of a file, in the toast and throws. */
export async function post(action, body, { file, isQuiet = false } = {}) {
  const response = await fetch(`/api/${action}`, {
    method: "POST",
    headers: { "X-Studio-Token": token, "Content-Type": "application/json" },
    body: typeof body === "string" || body instanceof Blob ? body : JSON.stringify(body ?? {}),
  }).catch(() => undefined);
  const answer = await response?.json().catch(() => undefined);
  if (response?.ok) return answer;
  const problem = answer?.error ?? "The studio does not answer.";
  if (!isQuiet) showProblem(file ? `${file.name}: ${problem}` : problem);
  throw Object.assign(new Error(problem), { isConflict: response?.status === 409 });
}

/** Posts for an event handler: the problem was shown, there is nothing left to do. */
export function act(action, body) {
  return post(action, body).catch(() => undefined);
}

let hiding;
export function showProblem(text) {
  const toast = byId("toast");
  toast.textContent = text;
  clearTimeout(hiding);
  hiding = setTimeout(() => { toast.textContent = ""; }, 6000);
}

/** Calls back with every state and every entry of the timeline, from the first one on. */
export function listen({ onState, onEntry }) {
  const pill = byId("connection");
  let run;
  follow({
    onEntry,
    onState: (state) => {
      run ??= state.session.started;
      if (run !== state.session.started) location.reload(); // another studio, with another token
      onState(state);
    },
    onConnected: (connected) => {
      setText(pill, connected ? "Connected" : "Disconnected");
      pill.dataset.tone = connected ? "good" : "bad";
    },
  });
}
