// Which frames of an animation are drawn.

const kFew = 40;
const kComb = 24;

/** All frames if they are few, else some spread evenly from the first to the last. */
export function spread(count) {
  if (count <= kFew) return Array.from({ length: count }, (_, frame) => frame);
  return Array.from({ length: kComb }, (_, i) => Math.round((i * (count - 1)) / (kComb - 1)));
}

/** How many frames the player goes through. */
export function frameCount(animation) {
  return Math.max(1, Math.floor(animation.op - animation.ip));
}

/** Ascending, each once, those that exist: what a player shows depends on where it was before. */
export function ascending(frames, count) {
  return [...new Set(frames)].filter((frame) => frame >= 0 && frame < count).sort((a, b) => a - b);
}
