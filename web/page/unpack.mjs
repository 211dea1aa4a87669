// The text of an animation inside a packed file, for the player. The program has judged the archive before.

async function inflated(bytes, format) {
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream(format));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

// The entries of a zip archive: names to {method, bytes}.
function entriesOf(bytes) {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  let end = bytes.length - 22;
  while (end >= 0 && view.getUint32(end, true) !== 0x06054b50) end -= 1;
  const entries = new Map();
  let at = view.getUint32(end + 16, true);
  for (let left = view.getUint16(end + 10, true); left > 0; left -= 1) {
    const [nameSize, extraSize, commentSize] = [28, 30, 32].map((offset) => view.getUint16(at + offset, true));
    const name = new TextDecoder().decode(bytes.subarray(at + 46, at + 46 + nameSize));
    const local = view.getUint32(at + 42, true);
    const begin = local + 30 + view.getUint16(local + 26, true) + view.getUint16(local + 28, true);
    entries.set(name, { method: view.getUint16(at + 10, true), bytes: bytes.subarray(begin, begin + view.getUint32(at + 20, true)) });
    at += 46 + nameSize + extraSize + commentSize;
  }
  return entries;
}

// `id`: which animation of a .lottie file.
export async function textOf(bytes, id) {
  let plain = bytes;
  if (bytes[0] === 0x1f && bytes[1] === 0x8b) plain = await inflated(bytes, "gzip");
  else if (bytes[0] === 0x50 && bytes[1] === 0x4b) {
    const entries = entriesOf(bytes);
    const entry = entries.get(`animations/${id}.json`) ?? entries.get(`a/${id}.json`);
    if (!entry) throw new Error("the animation is not in its archive");
    plain = entry.method === 8 ? await inflated(entry.bytes, "deflate-raw") : entry.bytes;
  }
  return new TextDecoder().decode(plain);
}
