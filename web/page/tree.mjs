// Compositions and nests as a tree, each nest with its verdict.
const kMostEntries = 3000; // entries; the rest is told as a number

// `compositions` of a listing, `nests` of a check.
export function makeTree(compositions, nests) {
  const { counted, element, number, quoted, setVerdict } = parts;
  const byId = new Map(compositions.map((composition) => [composition.id, composition]));
  const verdicts = new Map(nests.map((nest) => [`${nest.composition ?? ""}\n${nest.number}`, nest.verdict]));
  let left = kMostEntries;

  function entries(composition, above) {
    const nested = composition.layers.filter((layer) => layer.composition !== undefined);
    const list = element("ul");
    for (const layer of nested) {
      if (left-- <= 0) {
        list.append(element("li", {}, "and more, too many to show"));
        break;
      }
      const inner = byId.get(layer.composition);
      const verdict = verdicts.get(`${composition.id ?? ""}\n${layer.number}`);
      const words = [element("span", { class: "place" }, `#${layer.number} `), layer.name, " "];
      if (verdict) words.push(setVerdict(element("span"), verdict));
      if (inner) words.push(element("span", { class: "note" }, ` ${counted(inner.layers.length, "layer")}`));
      const hasMore = inner && !above.has(inner) && inner.layers.some((other) => other.composition !== undefined);
      list.append(element("li", {}, hasMore
        ? element("details", { open: "" }, element("summary", {}, ...words), entries(inner, new Set([...above, inner])))
        : element("p", {}, ...words)));
    }
    return list;
  }

  const main = byId.get(null) ?? compositions[0];
  const list = entries(main, new Set([main]));
  const head = `Composition ${quoted(main.name)}, ${number(main.width)} × ${number(main.height)}, ${counted(main.layers.length, "layer")}`;
  return element("ul", { class: "tree" }, element("li", {}, element("p", {}, head),
    list.firstChild ? list : element("p", { class: "note" }, "It has no nests.")));
}
