// __tcfapi of an application's own web views, after the IAB's "CMP API" 2.2. What is known comes from
// the application by update alone: no network, no storage. A page's own consent platform stays in
// force where it runs already or takes the function over later.
(() => {
  const isStub = (api) => {
    let loaded = false;
    try {
      api("ping", 2, (answer) => { loaded = answer.cmpLoaded === true; });
    } catch { /* no platform at all */ }
    return !loaded;
  };
  if (window.__vxTCFAPI || window.parent !== window) return;

  const listenersOfAFrame = 1000; // at most; a page's own scripts may have any number
  const listeners = new Map(); // by their numbers
  const numbersOf = new WeakMap(); // of the listeners of each frame, the oldest first
  let told; // the text of the last update
  let stored = {}; // InAppTCData, or a part of it
  let gdprApplies; // does not become unknown again while a page is shown
  let tcData;
  let eventStatus;
  let visible = false;

  // An error in one callback is the page's, and no matter to the others.
  function call(callback, ...answer) {
    try {
      callback(...answer);
    } catch (error) {
      queueMicrotask(() => { throw error; });
    }
  }

  // From the texts of the data in an application to the objects of the data in a page. These are
  // shared by all listeners, so nobody may change them.
  const flags = { 0: false, 1: true, __proto__: null };
  const flagOf = (digit) => flags[digit];
  const objectOf = (text, valueOf) => Object.freeze(Object.fromEntries(
    Array.from(typeof text === "string" ? text : "", (digit, i) => [i + 1, valueOf(digit)])
      .filter(([, value]) => value !== undefined)));
  const flagsOf = (text) => objectOf(text, flagOf);
  const basesOf = (texts) => ({
    consents: flagsOf(texts?.consents),
    legitimateInterests: flagsOf(texts?.legitimateInterests),
  });
  const typesOf = (text) => objectOf(text, (type) => (type === "_" ? undefined : Number(type)));
  const restrictionsOf = (texts) => Object.fromEntries(
    Object.entries(texts ?? {}).map(([purpose, text]) => [purpose, typesOf(text)]));

  function tcDataOf({ tcfPolicyVersion, cmpId, cmpVersion, ...rest }) {
    if (!gdprApplies) return { tcfPolicyVersion, cmpId, cmpVersion, gdprApplies };
    const data = {
      tcString: rest.tcString ?? "",
      tcfPolicyVersion,
      cmpId,
      cmpVersion,
      gdprApplies,
      eventStatus,
      cmpStatus: "loaded",
      isServiceSpecific: flagOf(rest.isServiceSpecific),
      useNonStandardTexts: flagOf(rest.useNonStandardTexts),
      publisherCC: rest.publisherCC,
      purposeOneTreatment: flagOf(rest.purposeOneTreatment),
      purpose: Object.freeze(basesOf(rest.purpose)),
      vendor: Object.freeze({
        ...basesOf(rest.vendor),
        disclosedVendors: flagsOf(rest.vendor?.disclosedVendors),
      }),
      specialFeatureOptins: flagsOf(rest.specialFeatureOptins),
      publisher: Object.freeze({
        ...basesOf(rest.publisher),
        customPurpose: Object.freeze(basesOf(rest.publisher?.customPurpose)),
        restrictions: Object.freeze(restrictionsOf(rest.publisher?.restrictions)),
      }),
    };
    if (rest.addtlConsent !== undefined) data.addtlConsent = rest.addtlConsent; // Google's
    return data;
  }

  function forget(id) {
    numbersOf.get(listeners.get(id)?.frame)?.delete(id);
    return listeners.delete(id);
  }

  // Nothing is said before it is known whether the GDPR applies.
  function tell(id) {
    const listener = listeners.get(id);
    if (!listener || gdprApplies === undefined) return;
    if (listener.frame?.closed || listener.once) forget(id);
    listener.isTold = true;
    call(listener.callback, listener.once ? { ...tcData } : { ...tcData, listenerId: id }, true);
  }

  // A frame that guesses the number of another's listener could end it.
  function newNumber() {
    const [high, low] = crypto.getRandomValues(new Uint32Array(2));
    return high * 2 ** 21 + (low >>> 11) + 1;
  }

  // A frame that shows one advertisement after the other never ends the listeners of those before.
  function noteNumber(frame, id) {
    const numbers = numbersOf.get(frame) ?? new Set();
    numbersOf.set(frame, numbers.add(id));
    if (numbers.size > listenersOfAFrame) forget(numbers.values().next().value);
  }

  function listen(callback, frame, once) {
    const id = newNumber();
    listeners.set(id, { callback, frame, once, isTold: false });
    if (frame) noteNumber(frame, id);
    tell(id);
  }

  const commands = new Map([
    ["ping", (callback) => call(callback, {
      gdprApplies,
      cmpLoaded: true,
      cmpStatus: "loaded",
      displayStatus: visible ? "visible"
        : gdprApplies === false || eventStatus === "tcloaded" ? "disabled" : "hidden",
      apiVersion: "2.2",
      cmpVersion: stored.cmpVersion,
      cmpId: stored.cmpId,
      gvlVersion: stored.gvlVersion,
      tcfPolicyVersion: stored.tcfPolicyVersion,
    }, true)],
    ["addEventListener", (callback, _, frame) => listen(callback, frame, false)],
    ["removeEventListener", (callback, id) => call(callback, forget(id))],
    ["getTCData", (callback, _, frame) => listen(callback, frame, true)], // deprecated
  ]);

  function answer(command, version, callback, parameter, frame) {
    if (typeof callback !== "function") return;
    const action = commands.get(command);
    const isKnown = version === undefined || version === null || version === 0 || version === 2;
    if (action && isKnown) action(callback, parameter, frame);
    else if (command === "removeEventListener") call(callback, false);
    else call(callback, null, false);
  }

  // In a stub's place, whether it came before or after. Whether there is no other platform.
  function takeOver() {
    const found = window.__tcfapi;
    if (found === api) return true;
    if (found && !isStub(found)) return false;
    let queue = [];
    try {
      queue = found?.() ?? [];
    } catch { /* no stub */ }
    window.__tcfapi = api;
    if (Array.isArray(queue)) for (const asked of queue) answer(...Array.from(asked ?? []).slice(0, 4));
    return true;
  }

  function callIn(data) {
    if (typeof data !== "string") return data?.__tcfapiCall;
    if (!data.includes("__tcfapiCall")) return undefined;
    try {
      return JSON.parse(data)?.__tcfapiCall;
    } catch {
      return undefined;
    }
  }

  // A stub's handler of messages passes a frame's call on. It is answered below instead: the IAB's
  // forgets the frame after the first answer.
  const isPassedOn = () => window.event?.type === "message" && Boolean(callIn(window.event.data));

  function api(command, version, callback, parameter) {
    if (!isPassedOn()) answer(command, version, callback, parameter);
  }

  // Of frames, in any depth.
  function hearFrame(event) {
    const asked = callIn(event.data);
    const { source, origin } = event;
    if (typeof asked !== "object" || !asked || !takeOver()) return;
    const { command, version, parameter, callId } = asked;
    if (!source || !["string", "number"].includes(typeof callId)) return;
    const target = origin.startsWith("http") ? origin : "*"; // no other origin can be named
    answer(command, version, (returnValue, success) => {
      const message = { __tcfapiReturn: { returnValue, success, callId } };
      source.postMessage(typeof event.data === "string" ? JSON.stringify(message) : message, target);
    }, parameter, source);
  }

  // Tells frames that there is someone to ask.
  function addLocator() {
    if (window.frames.__tcfapiLocator) return true;
    if (!document.body) return false;
    const frame = document.createElement("iframe");
    frame.name = "__tcfapiLocator";
    frame.style.display = "none";
    document.body.append(frame);
    return true;
  }

  function objectIn(text) {
    try {
      const value = JSON.parse(text);
      return typeof value === "object" && value ? value : {};
    } catch {
      return {};
    }
  }

  function update(text, event) {
    const isOther = text !== told;
    told = text;
    stored = objectIn(text);
    gdprApplies = flagOf(stored.gdprApplies) ?? gdprApplies;
    const isShownAnew = event === "cmpuishown" && !visible;
    visible = event === "cmpuishown";
    if (event !== "tcloaded") eventStatus = event;
    else if (isOther || eventStatus === "cmpuishown") eventStatus = stored.tcString ? event : undefined;
    tcData = tcDataOf(stored);
    const isNews = isOther || isShownAnew || event === "useractioncomplete";
    for (const [id, { isTold }] of [...listeners]) if (isNews || !isTold) tell(id);
    takeOver();
  }

  if (!takeOver()) return;
  document.addEventListener("DOMContentLoaded", takeOver);
  window.addEventListener("message", hearFrame);
  Object.defineProperty(window, "__vxTCFAPI", { value: Object.freeze({ update }) });
  if (!addLocator())
    new MutationObserver((_, observer) => addLocator() && observer.disconnect())
      .observe(document, { childList: true, subtree: true });
})();
