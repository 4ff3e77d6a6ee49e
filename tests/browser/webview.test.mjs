// What a page of the application's own web views, and frames in it, are told of the consent by
// __tcfapi: as the IAB's "CMP API" has it, with the IAB's stub and without.
import { after, before, test } from "node:test";
import assert from "node:assert/strict";
import { readFile } from "node:fs/promises";
import { createRequire } from "node:module";
import { join } from "node:path";
import { TCString } from "../tcf/node_modules/@iabtechlabtcf/core/lib/mjs/index.js";
import { Codec } from "../tcf/codec.mjs";
import { randomChoice, randomList } from "../tcf/inforce.mjs";
import { Random } from "../tcf/random.mjs";
import { closeBrowser } from "./browser.mjs";
import { call, heard, idsOf, webView } from "./webview.mjs";

const stub = await readFile(createRequire(import.meta.url).resolve("@iabtechlabtcf/stub"), "utf8");
const codec = new Codec();
const random = new Random(3);
const list = randomList(random);
const start = () =>
  codec.ask({ list: JSON.stringify(list), cmpID: 300, cmpVersion: 7, country: "FR" });
const told = (event) => codec.ask({ event });

before(start);
after(closeBrowser);
after(() => codec.close());

/// Calls __tcfapi by a message from a frame, as an object or as text; resolves once there is an answer.
function post(frame, callId, command, version, parameter, asText = false) {
  return frame.evaluate(([call, asText]) => new Promise((done) => {
    globalThis.returns ??= [];
    addEventListener("message", ({ data, origin }) => {
      const value = typeof data === "string" ? JSON.parse(data) : data;
      if (value.__tcfapiReturn?.callId !== call.callId) return;
      returns.push({ ...value.__tcfapiReturn, isText: typeof data === "string", origin });
      done(value.__tcfapiReturn);
    });
    parent.postMessage(asText ? JSON.stringify({ __tcfapiCall: call }) : { __tcfapiCall: call }, "*");
  }), [{ command, version, parameter, callId }, asText]);
}
const returned = (frame, count) => frame.waitForFunction(
  (count) => globalThis.returns.length >= count && globalThis.returns, count).then((h) => h.jsonValue());

const setOf = (vector) => [...vector].filter(([, is]) => is).map(([id]) => id);

/// What the IAB's library reads in the string, in the words of TCData.
function decoded({ tcString }) {
  const model = TCString.decode(tcString);
  const restrictions = model.publisherRestrictions.getRestrictions().flatMap((each) =>
    model.publisherRestrictions.getVendors(each)
      .map((vendor) => `${each.purposeId} ${vendor} ${each.restrictionType}`));
  return {
    tcfPolicyVersion: Number(model.policyVersion),
    cmpId: model.cmpId,
    cmpVersion: model.cmpVersion,
    isServiceSpecific: model.isServiceSpecific,
    useNonStandardTexts: model.useNonStandardTexts,
    publisherCC: model.publisherCountryCode,
    purposeOneTreatment: model.purposeOneTreatment,
    sets: [model.purposeConsents, model.purposeLegitimateInterests, model.vendorConsents,
      model.vendorLegitimateInterests, model.vendorsDisclosed, model.specialFeatureOptins,
      model.publisherConsents, model.publisherLegitimateInterests, model.publisherCustomConsents,
      model.publisherCustomLegitimateInterests].map(setOf),
    restrictions: restrictions.sort(),
  };
}

function inTheSameWords({ purpose, vendor, specialFeatureOptins, publisher, ...data }) {
  const { customPurpose: custom } = publisher;
  const restrictions = Object.entries(publisher.restrictions).flatMap(([id, vendors]) =>
    Object.entries(vendors).map(([vendor, type]) => `${id} ${vendor} ${type}`));
  return {
    ...Object.fromEntries(["tcfPolicyVersion", "cmpId", "cmpVersion", "isServiceSpecific",
      "useNonStandardTexts", "publisherCC", "purposeOneTreatment"].map((key) => [key, data[key]])),
    sets: [purpose.consents, purpose.legitimateInterests, vendor.consents,
      vendor.legitimateInterests, vendor.disclosedVendors, specialFeatureOptins,
      publisher.consents, publisher.legitimateInterests, custom.consents,
      custom.legitimateInterests].map(idsOf),
    restrictions: restrictions.sort(),
  };
}

/// The object `name` of the IAB's text, with a value of the right type at each place.
async function shapeInText(name) {
  const text = await readFile(join(process.env.VXPRIVACY_DATA, "tcf/cmp-api-v2.md"), "utf8");
  const [, object] = text.match(new RegExp(`^${name} = (\\{[^]*?\\n\\})`, "m"));
  const read = new Function(`return ${object.replaceAll("| undefined", "")}`);
  return read();
}

function expectShape(value, shape, place) {
  const type = typeof shape === "function" ? shape.name.toLowerCase() : typeof shape;
  assert.equal(typeof value, type, place);
  if (type !== "object") return;
  const [key] = Object.keys(shape);
  if (key.startsWith("["))
    for (const each of Object.keys(value)) expectShape(value[each], shape[key], `${place}.${each}`);
  else {
    assert.deepEqual(Object.keys(value).sort(), Object.keys(shape).sort(), place);
    for (const each of Object.keys(shape)) expectShape(value[each], shape[each], `${place}.${each}`);
  }
}

const steps = (answers) => answers.map(([data]) => data.eventStatus);

for (const order of ["without the IAB's stub", "behind the IAB's stub", "before the IAB's stub"])
  test(`a page and its frames hear a choice, ${order}`, async (t) => {
    await start();
    const { script } = await told("tcloaded");
    const { page, frames } = await webView(t,
      ...(order.startsWith("without") ? [script] : order.startsWith("behind") ? [stub] : [script, stub]));
    const [frame, opaque] = frames;
    await call(page, "ping", 2);
    await call(page, "addEventListener", 2);
    await call(page, "removeEventListener", 1, 1);
    if (order.startsWith("behind")) {
      assert.equal((await heard(page))[0][0][0].cmpStatus, "stub");
      await page.evaluate(script);
      await page.evaluate(script);
    }
    assert.equal(await page.locator("iframe[name=__tcfapiLocator]").count(), 1);
    const { returnValue: { listenerId: framesOwn } } = await post(frame, "one", "addEventListener", 2);
    await post(opaque, 7, "addEventListener", 0, undefined, true);

    await page.evaluate((await told("cmpuishown")).update);
    assert.equal((await call(page, "ping", 2))[0][0].displayStatus, "visible");
    let choice;
    do choice = randomChoice(random, list);
    while (!choice.publisher || choice.disclosed.length === 0 || !choice.restrictions[2]);
    await codec.ask({ choice });
    await page.evaluate((await told("useractioncomplete")).update);

    const [, listened, [refused]] = await heard(page);
    assert.deepEqual(refused, [false]);
    assert.deepEqual(steps(listened), [undefined, "cmpuishown", "useractioncomplete"]);
    assert.ok(listened.every(([, success]) => success === true));
    const [[before], , [data]] = listened;
    assert.equal(before.tcString, "");
    assert.deepEqual(before.vendor, { consents: {}, legitimateInterests: {}, disclosedVendors: {} });
    assert.equal(before.cmpId, 300);
    assert.deepEqual(inTheSameWords(data), decoded(data));
    assert.deepEqual(idsOf(data.vendor.disclosedVendors), choice.disclosed
      .filter((id) => list.vendors[id] && !list.vendors[id].deletedDate).sort((a, b) => a - b));

    for (const [each, isText] of [[frame, false], [opaque, true]]) {
      const returns = await returned(each, 3);
      assert.deepEqual(returns.map(({ returnValue }) => returnValue.eventStatus),
        [undefined, "cmpuishown", "useractioncomplete"]);
      assert.ok(returns.every((one) => one.isText === isText && one.success && one.origin === "https://app.test"));
      assert.deepEqual({ ...returns[2].returnValue, listenerId: data.listenerId }, data);
    }
    assert.equal((await post(frame, "end", "removeEventListener", 2, framesOwn)).returnValue, true);
    assert.equal((await post(frame, "again", "removeEventListener", 2, framesOwn)).returnValue, false);

    const [[ping]] = await call(page, "ping", 2);
    assert.deepEqual(ping, { gdprApplies: true, cmpLoaded: true, cmpStatus: "loaded",
      displayStatus: "hidden", apiVersion: "2.2", cmpVersion: 7, cmpId: 300,
      gvlVersion: list.vendorListVersion, tcfPolicyVersion: list.tcfPolicyVersion });
    if (process.env.VXPRIVACY_DATA) {
      expectShape(data, await shapeInText("TCData"), "TCData");
      expectShape(ping, await shapeInText("PingReturn"), "PingReturn");
    }

    // A page that comes later, and the same script again in it.
    const { script: later } = await told("tcloaded");
    const { page: next } = await webView(t, later);
    assert.deepEqual(steps(await call(next, "addEventListener", 2)), ["tcloaded"]);
    await next.evaluate(later);
    assert.deepEqual(steps((await heard(next))[0]), ["tcloaded"]);
    assert.equal((await call(next, "ping", 2))[0][0].displayStatus, "disabled");
    assert.deepEqual([...page.failures, ...next.failures], []);
  });

test("what a caller may ask wrongly, or by another version", async (t) => {
  await start();
  const { page, frames: [frame] } = await webView(t, (await told("tcloaded")).script);
  for (const version of [1, 3, -2, 1.5, "2", true, {}])
    for (const command of ["ping", "addEventListener", "getTCData"])
      assert.deepEqual(await call(page, command, version), [[null, false]], `${command} ${version}`);
  for (const version of [0, null, undefined, 2])
    assert.equal((await call(page, "getTCData", version))[0][0].cmpId, 300);
  for (const command of ["getVendorList", "constructor", 5, null])
    assert.deepEqual(await call(page, command, 2), [[null, false]]);
  await page.evaluate(() => {
    __tcfapi();
    __tcfapi("ping", 2);
    __tcfapi("addEventListener", 2, "no function");
  });
  for (const message of ["{__tcfapiCall", '{"__tcfapiCall":5}', { __tcfapiCall: null }, null,
    { __tcfapiCall: { command: "ping", version: 2 } },
    { __tcfapiCall: { command: "ping", version: 2, callId: {} } }])
    await frame.evaluate((message) => {
      addEventListener("message", () => { globalThis.wrong = true; });
      parent.postMessage(message, "*");
    }, message);
  assert.deepEqual((await post(frame, 1, "ping", 1)).returnValue, null);
  assert.equal((await returned(frame, 1)).length, 1);
  await page.evaluate(() => __vxTCFAPI.update('{"damaged', "useractioncomplete"));
  await page.evaluate(() =>
    __vxTCFAPI.update('{"vendor":5,"purpose":{"consents":[1]},"publisher":{"restrictions":{"1":7}}}', "tcloaded"));
  assert.deepEqual(page.failures, []);
});

test("whether the GDPR applies", async (t) => {
  const { page } = await webView(t, (await told("tcloaded")).script.replace(/globalThis\.__vxTCFAPI.*$/, ""));
  const update = (data, event) => page.evaluate(([data, event]) => __vxTCFAPI.update(data, event),
    [JSON.stringify(data), event]);
  await update({ cmpId: 300 }, "tcloaded");
  await call(page, "addEventListener", 2);
  await call(page, "getTCData", 2);
  await update({ cmpId: 300 }, "cmpuishown");
  assert.deepEqual(await heard(page), [[], []], "nobody is called before it is known");
  assert.equal((await call(page, "ping", 2))[0][0].gdprApplies, undefined);
  await update({ cmpId: 300, cmpVersion: 7, tcfPolicyVersion: 4, gdprApplies: 0, tcString: "C" }, "tcloaded");
  const [[[first]], [[asked]]] = await heard(page);
  const { listenerId, ...rest } = first;
  assert.equal(typeof listenerId, "number");
  assert.deepEqual(rest, { tcfPolicyVersion: 4, cmpId: 300, cmpVersion: 7, gdprApplies: false });
  assert.deepEqual(asked, rest);
  // Taken back: what is stored is gone, and pages must not go on with what they had.
  await update({ gdprApplies: 1, tcString: "C", addtlConsent: "2~1~dv." }, "tcloaded");
  await update({}, "tcloaded");
  const [[, consented, withdrawn]] = await heard(page);
  assert.deepEqual([consented[0].eventStatus, consented[0].addtlConsent], ["tcloaded", "2~1~dv."]);
  assert.deepEqual([withdrawn[0].eventStatus, withdrawn[0].gdprApplies, withdrawn[0].tcString], [undefined, true, ""]);
});

test("listeners are kept from each other", async (t) => {
  await start();
  await codec.ask({ choice: { ...randomChoice(random, list), disclosed: [1, 2, 3] } });
  const { page, frames } = await webView(t, (await told("tcloaded")).script);
  await page.evaluate(() => {
    globalThis.result = { calls: 0, once: 0 };
    const listen = (listener) => __tcfapi("addEventListener", 2, listener);
    for (let i = 0; i < 10_000; ++i) listen(() => { ++result.calls; });
    listen(() => { throw new Error("a page's own"); });
    listen((data) => {
      data.tcString = "forged";
      data.vendor.disclosedVendors[1] = "forged";
      data.purpose.consents = null;
    });
    listen(({ listenerId }) => {
      ++result.once;
      __tcfapi("removeEventListener", 2, () => {}, listenerId);
    });
    listen((data) => { result.last = JSON.stringify(data); });
  });
  await page.evaluate((await told("useractioncomplete")).update);
  const result = await page.evaluate(() => globalThis.result);
  assert.equal(result.calls, 20_000);
  assert.equal(result.once, 1);
  assert.ok(!result.last.includes("forged"));
  assert.ok(JSON.parse(result.last).purpose.consents);
  assert.deepEqual(page.failures, ["Error: a page's own", "Error: a page's own"]);

  // Of a frame's listeners the newest are kept, to a limit, and they go with it.
  await frames[0].evaluate(() => new Promise((done) => {
    globalThis.answers = [];
    addEventListener("message", ({ data }) => {
      if (answers.push(data.__tcfapiReturn) === 3000) done();
    });
    for (let callId = 0; callId < 3000; ++callId)
      parent.postMessage({ __tcfapiCall: { command: "addEventListener", version: 2, callId } }, "*");
  }));
  await page.evaluate((await told("useractioncomplete")).update);
  await post(frames[0], "last", "ping", 2);
  const answers = await frames[0].evaluate(() => answers);
  assert.ok(answers.every(({ success }) => success));
  assert.deepEqual(answers.slice(3000, -1).map(({ callId }) => callId), [...Array(1000).keys()].map((i) => i + 2000));
  assert.ok((await post(frames[1], 1, "addEventListener", 2)).success);
  await page.evaluate(() => document.querySelector("iframe").remove());
  await page.evaluate((await told("cmpuishown")).update);
  assert.equal((await returned(frames[1], 2))[1].returnValue.eventStatus, "cmpuishown");
});

test("a page's own consent platform stays in force", async (t) => {
  const { script } = await told("tcloaded");
  const own = "window.__tcfapi = (command, version, callback) => callback({ cmpLoaded: true, cmpId: 31 }, true);";
  const { page, frames: [frame] } = await webView(t, own, script);
  assert.equal((await call(page, "ping", 2))[0][0].cmpId, 31);
  const { page: later, frames: [below] } = await webView(t, script);
  await later.evaluate(own);
  assert.equal((await call(later, "ping", 2))[0][0].cmpId, 31);
  await later.evaluate((await told("useractioncomplete")).update);
  for (const each of [frame, below]) {
    await each.evaluate(() => parent.postMessage({ __tcfapiCall: { command: "ping", version: 2, callId: 1 } }, "*"));
    await each.evaluate(() => addEventListener("message", () => { globalThis.answered = true; }));
  }
  await Promise.all([page, later].map((each) => each.evaluate(() => new Promise((done) => {
    addEventListener("message", done, { once: true });
    postMessage("behind the frame's", "*");
  }))));
  for (const each of [frame, below]) assert.equal(await each.evaluate(() => globalThis.answered), undefined);
  assert.deepEqual([...page.failures, ...later.failures], []);
});
