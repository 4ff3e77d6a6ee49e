// A session of the studio, exported and played again, against its timeline.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";

const ask = async (address) => (await fetch(address)).text();
const withoutHost = (text) => text.replace(/^https?:\/\/[^/]+/, "");
const isOfTheWorld = (key) => key === "VXSDKIdentifier" || key.startsWith("IABTCF_");

const userInfo = (info) => info && Object.entries(info).map(([key, value]) => [key, withoutHost(value)]);

// What the timeline says of the engine, and what play prints of it, in the same words.
function enteredByEngine({ kind, title, body, level, source }) {
  if (kind === "log" && source === "engine") return [["log", level, title]];
  if (kind === "notification") return [["send", title, userInfo(body)]];
  if (kind === "callback") return [["callback", title, body]];
  const address = kind === "screen" && /^(?:Opens|Does not open) (.*)$/.exec(title);
  return address ? [["open", address[1]]] : [];
}

function printedByEngine({ log, send, callback, open }) {
  if (log) return [["log", ...log]];
  if (send) return [["send", send.name, userInfo(send.userInfo)]];
  if (callback) return [["callback", callback[0], callback[1] ?? null]];
  return open === undefined ? [] : [["open", open]];
}

const isAsked = ({ kind, title }) => kind === "store" || kind === "sdk" ||
  (kind === "screen" && !/^(Opens|Does not open) /.test(title));

function apply(texts, { before, now }) {
  for (const key of Object.keys(before)) texts.delete(key);
  for (const [key, value] of Object.entries(now)) texts.set(key, value);
  return texts;
}

const sorted = (texts) => Object.fromEntries([...texts].sort());

function isOn(result, key) {
  if (result.savedConsent) return result.savedConsent[key];
  const number = Number(key.slice(key.lastIndexOf("_") + 1));
  const control = result.views.find(({ type, tag }) => type === "switch" && tag === number);
  return control && (control.on ? "1" : "0");
}

function expectScreen({ title, body }, result) {
  if (title.endsWith(" tapped")) return; // leads anywhere
  if (title.startsWith("Privacy center left")) return assert.equal(result, null);
  assert.notEqual(result, null, title);
  for (const [key, value] of Object.entries(body ?? {}))
    assert.equal(isOn(result, key), value, `${title}: ${key}`);
}

// Both as of one moment, though a download may still be under way.
async function sessionOf(address) {
  const entries = async () => JSON.parse(await ask(new URL("api/timeline", address)));
  for (let timeline = await entries(); ;) {
    const script = await ask(new URL("api/session", address));
    const after = await entries();
    if (after.length === timeline.length) return { script, timeline };
    timeline = after;
  }
}

/// The studio's session, exported and played, prints what stands in the timeline: what the engine
/// logs, sends and calls back, the addresses that it opens, and after each of their changes the
/// store, the tag SDK's data and the screen. All else is a comment.
export async function expectReplay(address) {
  const { script, timeline } = await sessionOf(address);
  const { status, stdout, stderr } = spawnSync(process.env.VXPRIVACY, ["play", "-"],
    { input: script, encoding: "utf8", maxBuffer: 1 << 30 });
  assert.equal(status, 0, stderr + stdout.slice(-500));
  const printed = stdout.trimEnd().split("\n").map((line) => JSON.parse(line));
  assert.deepEqual(printed.filter(({ missing }) => missing), []);
  assert.deepEqual(printed.flatMap(printedByEngine), timeline.flatMap(enteredByEngine));

  const answers = printed.filter(({ result }) => result !== undefined);
  const asked = timeline.filter(isAsked);
  assert.equal(answers.length, asked.length);
  const [store, data] = [new Map(), new Map()];
  asked.forEach((entry, index) => {
    const { step, result } = answers[index];
    if (entry.kind === "screen") return expectScreen(entry, result);
    const texts = entry.kind === "store" ? store : data;
    apply(texts, entry.body);
    assert.deepEqual(result, sorted([...texts].filter(([key]) => !isOfTheWorld(key))));
    const made = printed.findLast((line) => line.tc !== undefined && line.step < step);
    if (made && entry.body.now.IABTCF_TCString) assert.equal(made.tc, store.get("IABTCF_TCString"));
  });
  const comments = script.split("\n").filter((line) => line.startsWith("# "));
  for (const { kind, title } of timeline.filter(({ kind }) => ["process", "request", "beacon", "studio", "hit"].includes(kind)))
    assert.ok(comments.includes(`# ${kind}: ${title}`), title);
}
