// Draws the stack of layers before and after: what moved, what is new, what is gone.
"use strict";
const drawing = (() => {
  const { element, number, shape } = parts;
  const kRow = 22; // pixels
  const kWidth = 1000;
  const kPanel = 430; // of one stack
  const kTop = 26;
  const kMaxOpen = 100; // layers that are drawn without folding
  const kMaxRows = 400;
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

  // Every layer of both stacks with what became of it; `key` groups neighbours that may be folded together.
  function told(data) {
    const hues = new Map(data.nests.map((nest, index) => [nest.number, index % kHues]));
    const names = new Map(data.nests.map((nest) => [nest.number, nest.name]));
    const after = data.stack_after.map((layer, index) => ({ ...layer, number: index + 1, notes: [] }));
    const keptPlaces = [...after.keys()].filter((place) => after[place].origin === "kept");
    const moved = new Set([...outOfOrder(keptPlaces.map((place) => after[place].was))].map((index) => keptPlaces[index]));
    const kept = new Set();
    after.forEach((layer, place) => {
      layer.key = layer.origin;
      if (layer.origin === "kept") {
        const old = data.stack_before[layer.was - 1];
        kept.add(layer.was);
        if (moved.has(place)) layer.notes.push("moved");
        if (old.name !== layer.name) layer.notes.push(`was called “${old.name}”`);
        if (old.in !== layer.in || old.out !== layer.out) layer.notes.push("other times");
        if (!old.off && layer.off) layer.notes.push("switched off");
        layer.kind = layer.notes.length ? "touched" : "kept";
        layer.key = layer.kind;
      } else if (layer.origin === "copied") {
        layer.kind = "copied";
        layer.hue = hues.get(layer.nest);
        layer.from = names.get(layer.nest);
        layer.key = `copied ${layer.nest}`;
      } else {
        layer.kind = "made";
      }
    });
    const before = data.stack_before.map((layer, index) => {
      const isNest = hues.has(index + 1);
      return { ...layer, number: index + 1, notes: [], isNest, hue: hues.get(index + 1), kind: isNest ? "nest" : "kept", isGone: !kept.has(index + 1), key: isNest ? `nest ${index}` : "kept" };
    });
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

  function title(row) {
    const [layer] = row.layers;
    if (row.isFold) return `${row.layers.length} layers, #${layer.number} to #${row.layers[row.layers.length - 1].number}`;
    return `#${layer.number} ${layer.name} (${layer.type}), ${number(layer.in)} to ${number(layer.out)}${[happened(layer), ...layer.notes].filter(Boolean).map((word) => `; ${word}`).join("")}`;
  }

  function happened(layer) {
    if (layer.origin === undefined) return layer.isNest ? (layer.isGone ? "un-nested, gone" : "un-nested, stays") : "";
    if (layer.kind === "copied") return `out of #${layer.nest} “${layer.from}”, where it was #${layer.was}`;
    if (layer.kind === "made") return "new";
    return `was #${layer.was}`;
  }

  const shortened = (name, most) => (name.length > most ? `${name.slice(0, most - 1)}…` : name);

  // One row of a stack with its left edge at `x`: number, name, bar.
  function drawRow(row, index, x, scale) {
    const [layer] = row.layers;
    const y = yOf(index);
    const hue = layer.hue === undefined ? "" : ` hue-${layer.hue}`;
    const group = shape("g", { class: `row ${row.isFold ? "fold " : ""}${layer.kind}${hue}${layer.off ? " off" : ""}` }, shape("title", {}, title(row)));
    group.append(shape("rect", { class: "ground", x, y: y - kRow / 2, width: kPanel, height: kRow }));
    const bars = x + 230;
    const room = kPanel - 230 - 8;
    if (row.isFold) {
      group.append(shape("text", { x: x + 40, y: y + 4 }, `… ${row.layers.length} more`));
    } else {
      group.append(shape("text", { class: "number", x: x + 32, y: y + 4 }, layer.number));
      const sign = { nest: layer.isGone ? "gone" : "stays", made: "new", touched: layer.notes[0] && layer.notes[0].startsWith("was called") ? "renamed" : layer.notes[0] }[layer.kind];
      const names = shape("svg", { x: x + 40, y: y - kRow / 2, width: sign ? 128 : 184, height: kRow }, shape("text", { x: 0, y: kRow / 2 + 4, class: "name" }, shortened(layer.name, sign ? 19 : 28)));
      group.append(names);
      if (sign) group.append(shape("text", { class: "sign", x: x + 224, y: y + 4 }, sign));
    }
    group.append(shape("line", { class: "rail", x1: bars, x2: bars + room, y1: y, y2: y }));
    const from = Math.min(...row.layers.map((each) => each.in));
    const to = Math.max(...row.layers.map((each) => each.out));
    const left = Math.min(1, Math.max(0, scale(from)));
    const right = Math.min(1, Math.max(0, scale(to)));
    group.append(shape("rect", { class: "bar", x: bars + left * room, y: y - 5, width: Math.max(2, (right - left) * room), height: 10, rx: 3 }));
    return group;
  }

  // Where the layer of that number is drawn.
  function placesOf(rows) {
    const places = new Map();
    rows.forEach((row, index) => row.layers.forEach((layer) => places.set(layer.number, index)));
    return places;
  }

  function drawLinks(leftRows, rightRows) {
    const links = shape("g", { class: "links" });
    const left = placesOf(leftRows);
    const [x1, x2] = [kPanel, kWidth - kPanel];
    const middle = (x1 + x2) / 2;
    const seen = new Set();
    for (let start = 0; start < rightRows.length; start += 1) {
      const [layer] = rightRows[start].layers;
      if (layer.kind === "made") continue;
      if (layer.kind === "copied") {
        let end = start;
        while (end + 1 < rightRows.length && rightRows[end + 1].layers[0].key === layer.key) end += 1;
        const y = yOf(left.get(layer.nest));
        const [top, bottom] = [yOf(start) - kRow / 2 + 2, yOf(end) + kRow / 2 - 2];
        links.append(shape("path", { class: `ribbon hue-${layer.hue}`, d: `M${x1} ${y - 7}C${middle} ${y - 7} ${middle} ${top} ${x2} ${top}L${x2} ${bottom}C${middle} ${bottom} ${middle} ${y + 7} ${x1} ${y + 7}Z` }));
        start = end;
        continue;
      }
      for (const each of rightRows[start].layers) {
        const from = left.get(each.was);
        if (seen.has(`${from} ${start}`)) continue;
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
      svg.append(shape("text", { class: "head", x: x + 40, y: 16 }, `${name}: ${rows.reduce((sum, row) => sum + row.layers.length, 0)}`));
      svg.append(shape("text", { class: "head frame", x: x + 230, y: 16 }, `frame ${number(first)}`), shape("text", { class: "head frame end", x: x + kPanel - 8, y: 16 }, number(last)));
      rows.forEach((row, index) => svg.append(drawRow(row, index, x, scale)));
    }
    return svg;
  }

  function summary(stacks) {
    const count = (layers, test) => layers.filter(test).length;
    const words = [
      [count(stacks.before, (layer) => layer.isNest && layer.isGone), "nest gone", "nests gone"],
      [count(stacks.after, (layer) => layer.kind === "copied"), "layer came out", "layers came out"],
      [count(stacks.after, (layer) => layer.kind === "made"), "layer is new", "layers are new"],
      [count(stacks.after, (layer) => layer.notes.includes("moved")), "layer moved", "layers moved"],
      [count(stacks.after, (layer) => layer.kind === "kept"), "layer as it was", "layers as they were"],
    ].filter(([n]) => n > 0).map(([n, one, many]) => `${n} ${n === 1 ? one : many}`);
    return `${words.join(", ") || "No layers"}.`;
  }

  function table(stacks) {
    const rows = stacks.after.map((layer) => element("tr", {},
      element("td", {}, layer.number), element("th", { scope: "row" }, layer.name), element("td", {}, layer.type),
      element("td", {}, `${number(layer.in)} to ${number(layer.out)}`),
      element("td", {}, [happened(layer), ...layer.notes].filter(Boolean).join("; "))));
    const head = element("tr", {}, ...["#", "Layer", "Kind", "Frames", "Comes from"].map((name) => element("th", { scope: "col" }, name)));
    return element("table", {}, element("thead", {}, head), element("tbody", {}, ...rows));
  }

  function fillLegend(stacks) {
    const entries = [
      ["kept", "as it was", stacks.after.some((layer) => layer.kind === "kept")],
      ["copied hue-0", "out of a nest, in the nest's colour", stacks.after.some((layer) => layer.kind === "copied")],
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
