// Closes, before anything of the animation runs, what the page's policy leaves open to an expression: calls between
// browsers, and elements that connect as soon as they are made. Expressions share this document with the player, so
// that what the player needs has to stay.
"use strict";
(() => {
  const kPlain = Object.freeze(Object.assign(Object.create(null), { div: 1, span: 1, canvas: 1, img: 1, style: 1 }));
  const kDrawn = "http://www.w3.org/2000/svg";
  const kNotDrawn = Object.freeze(Object.assign(Object.create(null), { a: 1, script: 1, foreignobject: 1 }));
  const { apply, deleteProperty } = Reflect;
  const { defineProperty } = Object;
  const { createElement, createElementNS } = Document.prototype;
  const lower = Function.prototype.call.bind(String.prototype.toLowerCase);
  const Refusal = Error;

  // Names become text once: what is looked at is what is made.
  function makePlain(name) {
    const text = lower(`${name}`);
    if (!(text in kPlain)) throw new Refusal(`the page makes no element ${text}`);
    return apply(createElement, this, [text]);
  }
  function makeDrawn(space, name) {
    const text = `${name}`;
    if (`${space}` !== kDrawn) return apply(makePlain, this, [text]);
    if (lower(text) in kNotDrawn) throw new Refusal(`the page makes no element ${text}`);
    return apply(createElementNS, this, [kDrawn, text]);
  }

  // Everything that makes elements of markup, of other documents or by name.
  const kMakers = /HTML|^(write|writeln|execCommand|createContextualFragment|createDocument|createElement|createElementNS)$/;
  const kGone = /^(webkit)?RTC|^(XSLTProcessor|DOMParser|XMLHttpRequest|customElements|CustomElementRegistry)$/;
  for (const name of Object.getOwnPropertyNames(window)) {
    const { value } = Object.getOwnPropertyDescriptor(window, name);
    for (const holder of typeof value === "function" ? [value, value.prototype] : []) {
      for (const member of holder ? Object.getOwnPropertyNames(holder) : []) if (kMakers.test(member)) deleteProperty(holder, member);
    }
    if (kGone.test(name)) deleteProperty(window, name);
  }
  defineProperty(Document.prototype, "createElement", { value: makePlain });
  defineProperty(Document.prototype, "createElementNS", { value: makeDrawn });
})();
