// The privacy center's page: its events go through the studio's page, which holds the token and hears
// when the screen changed.

globalThis.privacyChannel = { send: (event) => parent.sendToCenter(event) };
const { update } = await import("./surface.js");
globalThis.updateCenter = update;
update(); // what changed while this page loaded
