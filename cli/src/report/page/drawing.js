// Draws the layers before and after, at all levels of nests: what moved, what is new, what is gone.
"use strict";
const drawing = (() => {
  const { element, grouped, number, shape } = parts;
  const kRow = 22; // pixels
  const kWidth = 1000;
  const kPanel = 430; // of one stack
  const kTop = 26;
  const kIndent = 16; // of each level of nests
  const kMostIndents = 6;
  const kMaxOpen = 100; // layers that are drawn without folding
  const kMaxRows = 1500;
  const kHues = 8;

  // Of a sequence of numbers, the places that are no part of the longest rising one.
  function outOfOrder(numbers) {
    const ends = []; // places in `numbers`: the smallest end of a rising sequence of each length
    const previous = new Array(numbers.length);
    numbers.forEach((value, place) => {
      let low = 0;
      let high = ends.length;
      while (low < high) {
        const middle = (low + high) >> 1;
        if (numbers[ends[middle]] < value) low = middle + 1;
        else high = middle;
      }
      previous[place] = low > 0 ? ends[low - 1] : -1;
      ends[low] = place;
    });
    const rising = new Set();
    for (let place = ends.length ? ends[ends.length - 1] : -1; place >= 0; place = previous[place]) rising.add(place);
    return new Set([...numbers.keys()].filter((place) => !rising.has(place)));
  }

  const parentOf = (path) => path.slice(0, Math.max(0, path.lastIndexOf(".")));

  // The layers of all levels, each before those inside of it. A path is the numbers of the nests that lead to a layer
  // and its own.
  function flattened(tree, around = null, rows = []) {
    tree.forEach((layer, index) => {
      const row = { ...layer, number: index + 1, path: around ? `${around.path}.${index + 1}` : `${index + 1}`, around,
        depth: around ? around.depth + 1 : 0, notes: [], isNest: layer.type === "nest", layers: [] };
      row.spans = layer.shown ? layer.shown.split(" ").map((span) => span.split(":").map(Number)) : [];
      if (around) around.layers.push(row);
      rows.push(row);
      flattened(layer.layers ?? [], row, rows);
    });
    return rows;
  }

  // Every layer of both stacks with what became of it; `key` groups neighbours that may be folded together.
  function told(data) {
    const before = flattened(data.layers_before);
    const after = flattened(data.layers_after);
    const byPath = new Map(before.map((layer) => [layer.path, layer]));
    const drawn = new Map(after.filter((layer) => layer.from).map((layer) => [layer.from, layer]));
    // The layer before of that path, or else what is drawn of those around it.
    const nearest = (path) => byPath.get(path) ?? (path ? nearest(parentOf(path)) : undefined);

    // Nests are gone that layers came out of, and those of which nothing is left.
    const isInside = (layer) => Boolean(layer.around?.from) && parentOf(layer.from) === layer.around.from;
    const opened = new Set();
    for (const layer of after) {
      if (!layer.from || isInside(layer)) continue;
      const stop = layer.around?.from ?? "";
      for (let path = parentOf(layer.from); path && path !== stop; path = parentOf(path)) opened.add(path);
    }
    let hues = 0;
    for (const layer of before) {
      const keeper = layer.around && drawn.get(layer.around.path);
      const isHidden = keeper?.left_out > 0 || layer.around?.isUnknown;
      layer.isGone = layer.isNest && !drawn.has(layer.path) && !isHidden;
      layer.isUnknown = isHidden;
      layer.isOpened = layer.isNest && (opened.has(layer.path) || layer.isGone);
      if (layer.isOpened) layer.hue = hues++ % kHues;
      layer.tint = layer.hue ?? layer.around?.tint;
      layer.kind = layer.isOpened ? "nest" : layer.around?.tint !== undefined ? "inner" : "kept";
      layer.key = layer.isNest ? `nest ${layer.path}` : `${layer.kind} in ${layer.around?.path}`;
      if (layer.isOpened) layer.sign = layer.isGone ? "gone" : "stays";
      else if (layer.isNest && data.flat && drawn.has(layer.path)) layer.sign = "stays";
    }

    const keptOutside = after.filter((layer) => !layer.around && layer.from && !layer.from.includes("."));
    const moved = new Set([...outOfOrder(keptOutside.map((layer) => Number(layer.from)))].map((index) => keptOutside[index]));
    for (const layer of after) {
      const around = layer.around ? `in ${layer.around.path}` : "";
      layer.source = layer.from ? nearest(layer.from) : undefined;
      if (!layer.from) {
        layer.kind = "made";
        layer.sign = "new";
      } else if (isInside(layer) || (!layer.around && !layer.from.includes("."))) {
        const old = layer.source;
        if (moved.has(layer)) layer.notes.push("moved");
        if (old.path === layer.from) {
          if (old.name !== layer.name) layer.notes.push(`was called “${old.name}”`);
          if (old.in !== layer.in || old.out !== layer.out) layer.notes.push("other times");
          if (!old.off && layer.off) layer.notes.push("switched off");
        }
        layer.kind = layer.notes.length ? "touched" : "kept";
        if (layer.notes.length) layer.sign = layer.notes[0].startsWith("was called") ? "renamed" : layer.notes[0];
      } else {
        layer.kind = "copied";
        layer.nest = nearest(parentOf(layer.from));
        layer.tint = layer.nest?.tint;
      }
      layer.key = layer.layers.length ? `nest ${layer.path}` : `${layer.kind} ${layer.nest?.path ?? ""} ${around}`;
    }
    return { before, after };
  }

  // Rows to draw: layers, and folds that stand for several.
  function rowsOf(layers, isFolded) {
    const rows = [];
    for (let start = 0; start < layers.length;) {
      let end = start + 1;
      while (end < layers.length && layers[end].key === layers[start].key) end += 1;
      const count = end - start;
      if (isFolded && count > 6) {
        rows.push(...layers.slice(start, start + 3).map((layer) => ({ layers: [layer] })));
        rows.push({ layers: layers.slice(start + 3, end - 1), isFold: true });
        rows.push({ layers: [layers[end - 1]] });
      } else {
        rows.push(...layers.slice(start, end).map((layer) => ({ layers: [layer] })));
      }
      start = end;
    }
    if (rows.length <= kMaxRows) return rows;
    const rest = rows.splice(kMaxRows - 1).flatMap((row) => row.layers);
    rows.push({ layers: rest, isFold: true });
    return rows;
  }

  const yOf = (index) => kTop + index * kRow + kRow / 2;

  const namePath = (layer) => (layer.around ? `${namePath(layer.around)} › ` : "") + `#${layer.number} “${layer.name}”`;

  function title(row) {
    const [layer] = row.layers;
    if (row.isFold) return `${row.layers.length} layers, #${layer.number} to #${row.layers[row.layers.length - 1].number}`;
    const inside = layer.left_out ? `${many(layer.left_out)} more layers inside, not drawn` : "";
    return `#${layer.number} ${layer.name} (${layer.type}), ${times(layer)}${[happened(layer), ...layer.notes, inside].filter(Boolean).map((word) => `; ${word}`).join("")}`;
  }

  // In frames of the composition that it is in, and of the one that is drawn.
  function times(layer) {
    const own = `${number(layer.in)} to ${number(layer.out)}`;
    if (!layer.around) return own;
    if (layer.unplaced) return `${own} of its composition; an expression works the clock around it`;
    const shown = layer.spans.map(([from, to]) => `${number(from)} to ${number(to)}`).join(", ");
    return shown === own ? own : `${own} of its composition, ${shown ? `shown ${shown}` : "never shown"}`;
  }

  function happened(layer) {
    if (layer.kind === "made") return "new";
    if (layer.kind === "copied") return `out of ${layer.nest ? namePath(layer.nest) : "a nest"}${layer.source?.path === layer.from ? `, where it was #${layer.source.number}` : ""}`;
    if (layer.from) return layer.source.path === layer.from ? `was #${layer.source.number}` : "";
    if (!layer.isOpened) return "";
    return layer.isGone ? "un-nested, gone" : "un-nested, stays";
  }

  const shortened = (name, most) => (name.length > most ? `${name.slice(0, most - 1)}…` : name);

  function spansOf(row) {
    if (!row.isFold) return row.layers[0].spans;
    const all = row.layers.flatMap((layer) => layer.spans);
    return all.length ? [[Math.min(...all.map(([from]) => from)), Math.max(...all.map(([, to]) => to))]] : [];
  }

  // One row of a stack with its left edge at `x`: number, name, bars.
  function drawRow(row, index, x, scale) {
    const [layer] = row.layers;
    const y = yOf(index);
    const hue = layer.tint === undefined ? "" : ` hue-${layer.tint}`;
    const names = ["row", row.isFold && "fold", layer.kind, layer.isNest && "named", layer.off && "off", layer.unplaced && "unplaced"];
    const group = shape("g", { class: `${names.filter(Boolean).join(" ")}${hue}` }, shape("title", {}, title(row)));
    group.append(shape("rect", { class: "ground", x, y: y - kRow / 2, width: kPanel, height: kRow }));
    const indent = kIndent * Math.min(layer.depth, kMostIndents);
    for (let at = kIndent; at <= indent; at += kIndent) {
      group.append(shape("line", { class: "guide", x1: x + 12 + at, x2: x + 12 + at, y1: y - kRow / 2, y2: y + kRow / 2 }));
    }
    const bars = x + 230;
    const room = kPanel - 230 - 8;
    const left = x + 40 + indent;
    if (row.isFold) {
      group.append(shape("text", { x: left, y: y + 4 }, `… ${row.layers.length} more`));
    } else {
      group.append(shape("text", { class: "number", x: left - 6, y: y + 4 }, layer.number));
      const sign = [layer.left_out && (layer.left_out < 1e4 ? `+${layer.left_out}` : "+ many"), layer.sign].filter(Boolean).join(" ");
      const width = (sign ? 128 : 184) - indent;
      group.append(shape("svg", { x: left, y: y - kRow / 2, width, height: kRow }, shape("text", { x: 0, y: kRow / 2 + 4, class: "name" }, shortened(layer.name, Math.floor(width / (layer.isNest ? 7.6 : 6.6))))));
      if (sign) group.append(shape("text", { class: "sign", x: x + 224, y: y + 4 }, sign));
    }
    group.append(shape("line", { class: "rail", x1: bars, x2: bars + room, y1: y, y2: y }));
    for (const [from, to] of spansOf(row)) {
      const start = Math.min(1, Math.max(0, scale(from)));
      const end = Math.min(1, Math.max(0, scale(to)));
      if (end > start) group.append(shape("rect", { class: "bar", x: bars + start * room, y: y - 5, width: Math.max(2, (end - start) * room), height: 10, rx: 3 }));
    }
    return group;
  }

  function drawLinks(leftRows, rightRows) {
    const links = shape("g", { class: "links" });
    const left = new Map(leftRows.flatMap((row, index) => row.layers.map((layer) => [layer.path, index])));
    const [x1, x2] = [kPanel, kWidth - kPanel];
    const middle = (x1 + x2) / 2;
    const seen = new Set();
    for (let start = 0; start < rightRows.length; start += 1) {
      const [layer] = rightRows[start].layers;
      if (layer.kind === "made") continue;
      if (layer.kind === "copied") {
        let end = start;
        while (!layer.layers.length && end + 1 < rightRows.length && rightRows[end + 1].layers[0].key === layer.key) end += 1;
        const sources = rightRows.slice(start, end + 1).flatMap((row) => row.layers).map((each) => left.get(each.source?.path)).filter((place) => place !== undefined);
        if (sources.length) {
          const [from, to] = [yOf(Math.min(...sources)) - kRow / 2 + 2, yOf(Math.max(...sources)) + kRow / 2 - 2];
          const [top, bottom] = [yOf(start) - kRow / 2 + 2, yOf(end) + kRow / 2 - 2];
          links.append(shape("path", { class: `ribbon${layer.tint === undefined ? "" : ` hue-${layer.tint}`}`, d: `M${x1} ${from}C${middle} ${from} ${middle} ${top} ${x2} ${top}L${x2} ${bottom}C${middle} ${bottom} ${middle} ${to} ${x1} ${to}Z` }));
        }
        start = end;
        continue;
      }
      for (const each of rightRows[start].layers) {
        const from = left.get(each.source.path);
        if (from === undefined || seen.has(`${from} ${start}`)) continue;
        seen.add(`${from} ${start}`);
        links.append(shape("path", { class: `link ${each.kind}`, d: `M${x1} ${yOf(from)}C${middle} ${yOf(from)} ${middle} ${yOf(start)} ${x2} ${yOf(start)}` }));
      }
    }
    return links;
  }

  function draw(data, stacks, isFolded) {
    const leftRows = rowsOf(stacks.before, isFolded);
    const rightRows = rowsOf(stacks.after, isFolded);
    const height = kTop + kRow * Math.max(leftRows.length, rightRows.length) + 8;
    const first = data.composition.first_frame;
    const last = Math.max(first + 1, JSON.parse(document.getElementById("before-animation").textContent).op);
    const scale = (frame) => (frame - first) / (last - first);
    const svg = shape("svg", { class: "stacks", viewBox: `0 0 ${kWidth} ${height}`, width: kWidth, height, role: "img", "aria-label": `${summary(stacks)} The table below tells the same.` });
    svg.append(drawLinks(leftRows, rightRows));
    for (const [name, x, rows] of [["Before", 0, leftRows], ["After", kWidth - kPanel, rightRows]]) {
      svg.append(shape("text", { class: "head", x: x + 40, y: 16 }, `${name}: ${levels(rows.flatMap((row) => row.layers))}`));
      svg.append(shape("text", { class: "head frame", x: x + 230, y: 16 }, `frame ${number(first)}`), shape("text", { class: "head frame end", x: x + kPanel - 8, y: 16 }, number(last)));
      rows.forEach((row, index) => svg.append(drawRow(row, index, x, scale)));
    }
    return svg;
  }

  function summary(stacks) {
    const count = (layers, test) => layers.filter(test).length;
    const words = [
      [count(stacks.before, (layer) => layer.isGone), "nest gone", "nests gone"],
      [count(stacks.after, (layer) => layer.kind === "copied"), "layer came out", "layers came out"],
      [count(stacks.after, (layer) => layer.kind === "made"), "layer is new", "layers are new"],
      [count(stacks.after, (layer) => layer.notes.includes("moved")), "layer moved", "layers moved"],
      [count(stacks.after, (layer) => layer.kind === "kept"), "layer as it was", "layers as they were"],
    ].filter(([n]) => n > 0).map(([n, one, many]) => `${n} ${n === 1 ? one : many}`);
    return [`${words.join(", ") || "No layers"}.`, leftOut("Before", stacks.before), leftOut("After", stacks.after)].filter(Boolean).join(" ");
  }

  const levels = (layers) => {
    const inside = layers.filter((layer) => layer.around).length;
    return `${layers.length - inside}${inside ? ` + ${inside} nested` : ""}`;
  };

  const many = (count) => (count < 1e6 ? grouped(count) : "more than a million");

  // How much there is besides what is drawn.
  function leftOut(when, layers) {
    const more = layers.reduce((sum, layer) => sum + (layer.left_out ?? 0), 0);
    if (!more) return "";
    const inside = layers.filter((layer) => layer.around).length;
    const deepest = layers.reduce((most, layer) => Math.max(most, layer.depth), 0);
    return `${when}, ${grouped(inside)} layers in nests are drawn, down to level ${deepest + 1}, and ${many(more)} more are left out.`;
  }

  function table(stacks) {
    const rows = stacks.after.map((layer) => element("tr", {},
      element("td", {}, layer.path), element("th", { scope: "row" }, layer.name), element("td", {}, layer.type),
      element("td", {}, times(layer)),
      element("td", {}, [happened(layer), ...layer.notes].filter(Boolean).join("; "))));
    const head = element("tr", {}, ...["#", "Layer", "Kind", "Frames", "Comes from"].map((name) => element("th", { scope: "col" }, name)));
    return element("table", {}, element("thead", {}, head), element("tbody", {}, ...rows));
  }

  function fillLegend(stacks) {
    const entries = [
      ["kept", "as it was", stacks.after.some((layer) => layer.kind === "kept")],
      ["copied", "out of a nest, in the nest’s colour", stacks.after.some((layer) => layer.kind === "copied")],
      ["made", "new", stacks.after.some((layer) => layer.kind === "made")],
      ["touched", "moved, renamed or with other times", stacks.after.some((layer) => layer.kind === "touched")],
    ];
    for (const [kind, words, isThere] of entries) {
      if (isThere) document.getElementById("legend").append(element("li", {}, element("span", { class: `swatch ${kind}` }), words));
    }
  }

  // Fills the page's section of the layers.
  function fillSection(data) {
    const stacks = told(data);
    const place = document.getElementById("drawing");
    const isLarge = Math.max(stacks.before.length, stacks.after.length) > kMaxOpen;
    document.getElementById("layers-summary").textContent = summary(stacks);
    fillLegend(stacks);
    place.append(draw(data, stacks, isLarge));
    const unfold = document.getElementById("unfold");
    let isFolded = isLarge;
    const name = () => { unfold.textContent = isFolded ? "Draw every layer" : "Fold long runs of layers"; };
    name();
    unfold.hidden = !isLarge;
    unfold.addEventListener("click", () => {
      isFolded = !isFolded;
      place.replaceChildren(draw(data, stacks, isFolded));
      name();
    });
    const details = document.getElementById("layer-details");
    details.addEventListener("toggle", () => {
      const holder = document.getElementById("layer-table");
      if (details.open && !holder.firstChild) holder.append(table(stacks));
    });
  }

  return { fill: fillSection };
})();
