// One composition of an animation as an animation of its own.

/** The compositions by id; the main one under null. */
export function compositions(animation) {
  const all = new Map([[null, animation]]);
  for (const asset of animation.assets ?? []) if (asset.layers) all.set(asset.id, asset);
  return all;
}

/** Of the layers that show that composition; only they know its size. */
function largest(animation, id, side) {
  let size = 0;
  for (const { layers } of compositions(animation).values()) {
    for (const layer of layers) if (layer.ty === 0 && layer.refId === id) size = Math.max(size, layer[side]);
  }
  return Math.ceil(size);
}

/** @returns the composition in the place of the main one, at its own size and as long as its layers last. */
export function alone(animation, id) {
  if (id === null) return animation;
  const { layers } = compositions(animation).get(id);
  const end = Math.ceil(Math.max(0, ...layers.map((layer) => layer.op)));
  return { ...animation, w: largest(animation, id, "w"), h: largest(animation, id, "h"), ip: 0, op: end, layers };
}
