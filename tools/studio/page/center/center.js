// The privacy center's page: its events go through the studio's page, which holds the token.

globalThis.privacyChannel = { send: (event) => parent.sendToCenter(event) };
await import("./surface.js");
