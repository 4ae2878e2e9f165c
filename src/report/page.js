"use strict";
// Sorting, filtering and CSV of the tables, and the drawing of the network. The page reads without.
(() => {
  const element = (tag, properties, ...children) => {
    const made = Object.assign(document.createElement(tag), properties);
    made.append(...children);
    return made;
  };

  // ---- tables

  // A cell's own text, without the labels of a picture in it.
  const textOf = (row, column) => {
    const cell = row.cells[column];
    const last = cell ? cell.lastChild : null;
    return last && last.nodeName !== "svg" ? last.textContent.trim() : "";
  };
  // The number that a cell shows, or null.
  const numberOf = (text) => {
    const plain = text.replace(/,/g, "").replace("\u2212", "-");
    return /^[+-]?\d+(\.\d+)?$/.test(plain) ? Number(plain) : null;
  };

  // Numbers before texts, empty cells last either way; equal ones keep their order.
  const compareCells = (a, b, sign) => {
    if (a === "" || b === "") {
      return (a === "") - (b === "");
    }
    const x = numberOf(a);
    const y = numberOf(b);
    if (x !== null && y !== null) {
      return sign * (x - y);
    }
    return x !== null ? -1 : y !== null ? 1 : sign * a.localeCompare(b, "en", {numeric: true});
  };

  // A table of thousands of rows is laid out and painted as a whole, which stops the scrolling. On
  // the screen it is one of few rows and others below it, which are left alone while out of sight.
  const partRows = 40;
  const partsOf = new Map();

  const rowsOf = (table) => (partsOf.get(table) || [table]).flatMap((part) => {
    const body = part.querySelector("tbody:not(.total)");
    return body ? [...body.rows] : [];
  });

  // Puts the rows into the table, or into its parts: those that are shown evenly.
  const arrange = (table, rows) => {
    const parts = partsOf.get(table);
    if (!parts) {
      table.querySelector("tbody:not(.total)").append(...rows);
      return;
    }
    const shown = rows.filter((row) => !row.hidden);
    parts.forEach((part, i) => {
      const some = shown.slice(i * partRows, (i + 1) * partRows);
      part.querySelector("tbody:not(.total)").replaceChildren(...some);
      part.parentElement.hidden = i > 0 && !some.length;
    });
    parts.at(-1).querySelector("tbody:not(.total)").append(...rows.filter((row) => row.hidden));
  };

  // The columns of all parts as wide as the first one makes them.
  const align = (table) => {
    const parts = partsOf.get(table);
    const heads = [...table.tHead.rows[0].cells];
    table.style.tableLayout = table.style.minWidth = "";
    heads.forEach((head) => { head.style.width = ""; });
    const widths = heads.map((head) => head.offsetWidth);
    const whole = widths.reduce((sum, width) => sum + width, 0) + "px";
    for (const part of parts) {
      part.style.tableLayout = "fixed";
      part.style.minWidth = part.parentElement.style.minWidth = whole;
      [...part.tHead.rows[0].cells].forEach((head, i) => { head.style.width = widths[i] + "px"; });
    }
  };

  const split = (table) => {
    const rows = rowsOf(table);
    if (rows.length <= 3 * partRows || partsOf.has(table)) {
      return;
    }
    const box = table.parentElement;
    const parts = [table];
    const wrap = element("div", {className: "piece"});
    table.before(wrap);
    wrap.append(table);
    for (let i = partRows; i < rows.length; i += partRows) {
      const part = table.cloneNode(false);
      part.removeAttribute("id");
      part.classList.add("more");
      part.append(element("caption", {}, table.caption.textContent + ", continued"),
        table.tHead.cloneNode(true), element("tbody", {}));
      part.tHead.querySelectorAll("button").forEach((button) => {
        button.replaceWith(button.textContent);
      });
      box.append(element("div", {className: "piece"}, part));
      parts.push(part);
    }
    partsOf.set(table, parts);
    arrange(table, rows);
    align(table);
  };

  const join = (table) => {
    const parts = partsOf.get(table);
    const rows = rowsOf(table);
    partsOf.delete(table);
    arrange(table, rows);
    parts.slice(1).forEach((part) => part.parentElement.remove());
    table.parentElement.replaceWith(table);
    table.style.tableLayout = table.style.minWidth = "";
    [...table.tHead.rows[0].cells].forEach((head) => { head.style.width = ""; });
  };

  const sortTable = (table, column, descending) => {
    const rows = rowsOf(table).map((row) => [textOf(row, column), row]);
    if (!rows.length) {
      return;
    }
    rows.sort((a, b) => compareCells(a[0], b[0], descending ? -1 : 1));
    arrange(table, rows.map((entry) => entry[1]));
    for (const head of table.tHead.rows[0].cells) {
      head.removeAttribute("aria-sort");
    }
    table.tHead.rows[0].cells[column].setAttribute("aria-sort", descending ? "descending" : "ascending");
  };

  const makeSortable = (table) => {
    [...table.tHead.rows[0].cells].forEach((head, column) => {
      const button = element("button", {type: "button"}, head.textContent);
      button.addEventListener("click", () => {
        sortTable(table, column, head.getAttribute("aria-sort") === "ascending");
      });
      head.replaceChildren(button);
    });
  };

  const csvOf = (table) => {
    const quoted = (text) => (/[",\r\n]/.test(text) ? '"' + text.replace(/"/g, '""') + '"' : text);
    const line = (row) =>
      [...table.tHead.rows[0].cells].map((head, column) => {
        const text = textOf(row, column);
        const number = numberOf(text);
        return quoted(number === null ? text : String(number));
      }).join(",") + "\r\n";
    const shown = rowsOf(table).filter((row) => !row.hidden);
    return [table.tHead.rows[0], ...shown].map(line).join("");
  };

  const addTools = (table) => {
    const name = table.caption.textContent;
    const count = element("output");
    const filter = element("input", {type: "search", placeholder: "Filter rows"});
    filter.setAttribute("aria-label", "Filter rows: " + name);
    filter.addEventListener("input", () => {
      const words = filter.value.toLowerCase().split(/\s+/).filter(Boolean);
      let shown = 0;
      const rows = rowsOf(table);
      for (const row of rows) {
        const text = [...row.cells].map((cell, column) => textOf(row, column)).join(" ").toLowerCase();
        row.hidden = !words.every((word) => text.includes(word));
        shown += row.hidden ? 0 : 1;
      }
      if (rows.length) {
        arrange(table, rows);
      }
      count.value = words.length ? shown + (shown === 1 ? " row" : " rows") : "";
    });
    const save = element("button", {type: "button"}, "CSV");
    save.setAttribute("aria-label", "Save as CSV: " + name);
    save.addEventListener("click", () => {
      const address = URL.createObjectURL(new Blob([csvOf(table)], {type: "text/csv"}));
      element("a", {href: address, download: table.id + ".csv"}).click();
      setTimeout(() => URL.revokeObjectURL(address), 1000);
    });
    table.parentElement.before(element("div", {className: "tools"}, filter, save, count));
  };

  for (const table of document.querySelectorAll("table.sorted")) {
    makeSortable(table);
    if (table.classList.contains("long")) {
      addTools(table);
      split(table);
    }
  }
  const longTables = document.querySelectorAll("table.long[id]");
  addEventListener("resize", () => [...partsOf.keys()].forEach(align));
  addEventListener("afterprint", () => longTables.forEach(split));
  addEventListener("beforeprint", () => {
    [...partsOf.keys()].forEach(join);
    for (const part of document.querySelectorAll("details")) {
      part.open = true;
    }
  });

  // ---- the network

  const place = document.getElementById("drawing");
  if (!place) {
    return;
  }
  const columns = ["machine", "cutter", "batch", "pattern", "store", "waste", "delay", "order"];

  // The nodes with kind, name, grade and place, the arcs and the flows of the record.
  const readNetwork = () => {
    const run = JSON.parse(document.getElementById("corvane-run").textContent);
    const grade = run.cutters.map((cutter) => cutter.grade);
    const lists = {
      machine: run.machines.map((machine) => [machine.name, null]),
      cutter: run.cutters.map((cutter, i) => [cutter.name, grade[i]]),
      pattern: run.patterns.map((pattern) => [pattern[0], grade[pattern[1]]]),
      store: run.stores.map((store) => [store[0], grade[store[1]]]),
      order: run.orders.map((order) => [order.name, order.grade]),
    };
    const nodes = [];
    for (const group of run.network.nodes) {
      const list = lists[group.kind] || group.names.map((name) => [name, null]);
      list.forEach(([name, ofGrade], i) => nodes.push({
        kind: group.kind, name, grade: ofGrade, x: group.places[2 * i], y: group.places[2 * i + 1],
      }));
    }
    const flows = run.plan ? run.plan.flows : [];
    const arcs = [];
    for (const [from, ...targets] of run.network.arcs) {
      targets.forEach((to) => arcs.push([from, to, 0]));
    }
    // Nodes without a grade of their own have that of what they give to or take from; machines have
    // all.
    for (const [from, to] of arcs) {
      for (const [one, other] of [[from, to], [to, from]]) {
        if (nodes[one].grade === null && nodes[one].kind !== "machine") {
          nodes[one].grade = nodes[other].grade;
        }
      }
    }
    return {nodes, arcs, flows, hasPlan: Boolean(run.plan), grades: [...new Set(grade)].sort()};
  };

  // The arcs that are drawn: of one grade or all, those that carry paper or all.
  const chosen = (network, grade, all) => {
    const isOf = ([from, to]) => !grade || [from, to].every((node) =>
      network.nodes[node].grade === grade || network.nodes[node].kind === "machine");
    const carrying = network.flows.filter(isOf);
    if (network.hasPlan && !all) {
      return carrying;
    }
    const key = (arc) => arc[0] * network.nodes.length + arc[1];
    const carried = new Set(carrying.map(key));
    return carrying.concat(network.arcs.filter((arc) => isOf(arc) && !carried.has(key(arc))));
  };

  // Columns from left to right; in each the nodes by grade, since nothing flows from one grade to
  // another, and then in the order of what they take from.
  const spread = (network, arcs, width, room, tallest) => {
    const used = new Map();
    const boxOf = (node) => {
      if (!used.has(node)) {
        used.set(node, {node, into: 0, out: 0, rank: 0, weight: 0});
      }
      return used.get(node);
    };
    for (const [from, to, flow] of arcs) {
      boxOf(from).out += flow;
      boxOf(to).into += flow;
    }
    const present = columns.filter((kind) => kind !== "waste" &&
      [...used.keys()].some((node) => network.nodes[node].kind === kind));
    const columnOf = (kind) => present.indexOf(kind === "waste" ? "store" : kind);
    const byColumn = present.map(() => []);
    for (const box of used.values()) {
      const column = columnOf(network.nodes[box.node].kind);
      if (column < 0) {
        byColumn[0].push(box);
      } else {
        byColumn[column].push(box);
      }
    }
    const bySource = new Map();
    for (const arc of arcs) {
      bySource.has(arc[0]) ? bySource.get(arc[0]).push(arc) : bySource.set(arc[0], [arc]);
    }
    const most = Math.max(1, ...byColumn.map((column) => column.length));
    const height = Math.min(tallest, Math.max(380, most * 9));
    const through = Math.max(...byColumn.map((column) =>
      column.reduce((sum, box) => sum + Math.max(box.into, box.out), 0)));
    const scale = through > 0 ? 0.45 * height / through : 0;
    const step = byColumn.length > 1 ? (width - 100 - room) / (byColumn.length - 1) : 0;
    // Machines stand where the paper that they make goes, as far as grades tell it.
    for (const box of byColumn[0]) {
      for (const [, to, flow] of bySource.get(box.node) || []) {
        const weight = flow > 0 ? flow : 1e-3;
        box.rank += weight * network.grades.indexOf(network.nodes[to].grade);
        box.weight += weight;
      }
    }
    byColumn.forEach((column, index) => {
      const rank = (box) => (box.weight > 0 ? box.rank / box.weight : box.node * 1e-6);
      const isWaste = (box) => network.nodes[box.node].kind === "waste";
      const gradeOf = (box) => network.grades.indexOf(network.nodes[box.node].grade);
      column.sort((a, b) => gradeOf(a) - gradeOf(b) || isWaste(a) - isWaste(b) ||
        rank(a) - rank(b) || a.node - b.node);
      const tall = column.reduce((sum, box) => sum + scale * Math.max(box.into, box.out), 0);
      const gap = (height - 60 - tall) / Math.max(1, column.length);
      let y = 30 + gap / 2;
      for (const box of column) {
        box.x = 90 + index * step;
        box.y = y;
        box.tall = scale * Math.max(box.into, box.out);
        box.gap = gap + box.tall;
        y += box.tall + gap;
        for (const [, to, flow] of bySource.get(box.node) || []) {
          const target = used.get(to);
          const weight = flow > 0 ? flow : 1e-3;
          target.rank += weight * (box.y + box.tall / 2);
          target.weight += weight;
        }
      }
    });
    return {used, height, scale, step, present, room};
  };

  const heads = {machine: "Machines", cutter: "Deckles", batch: "Batches", pattern: "Patterns",
    store: "Rolls made, and trim", delay: "Freight", order: "Orders"};

  // A text that lines under it leave readable; cut short where there is no room for it.
  const label = (context, colors, text, x, y, room) => {
    let shown = text;
    while (context.measureText(shown).width > room && shown.length > 4) {
      shown = shown.slice(0, -2) + "\u2026";
    }
    context.strokeStyle = colors.ground;
    context.lineWidth = 3;
    context.lineJoin = "round";
    context.strokeText(shown, x, y);
    context.fillStyle = colors.ink;
    context.fillText(shown, x, y);
  };

  // What stands in the columns, and how wide how much paper is.
  const drawLegend = (context, layout, colors) => {
    context.font = "600 11px system-ui, sans-serif";
    layout.present.forEach((kind, index) => {
      context.textAlign = index === 0 ? "center" : "left";
      label(context, colors, heads[kind], 90 + index * layout.step, 14, Infinity);
    });
    context.font = "10px system-ui, sans-serif";
    if (layout.scale > 0) {
      const most = 40 / layout.scale;
      const digit = 10 ** Math.floor(Math.log10(most));
      const inches = digit * [5, 2, 1].find((times) => times * digit <= most);
      context.fillStyle = colors.accent;
      context.globalAlpha = 0.4;
      context.fillRect(4, layout.height - 4 - inches * layout.scale, 30, inches * layout.scale);
      context.globalAlpha = 1;
      context.textAlign = "left";
      label(context, colors, "as wide as " + inches.toLocaleString("en") + " in", 40,
        layout.height - 1 - inches * layout.scale / 2, Infinity);
    }
  };

  // Paper is white, whatever the screen is.
  const colorsOnPaper = {ink: "#1b2026", quiet: "#525b65", accent: "#1d5f91", trim: "#c62828",
    ground: "#fff"};

  const colorsOf = () => {
    const style = getComputedStyle(document.documentElement);
    const color = (name) => style.getPropertyValue("--" + name).trim();
    return {ink: color("ink"), quiet: color("quiet"), accent: color("accent"), trim: color("trim"),
      ground: color("ground")};
  };

  // As wide all along as it is at its ends, where a thick stroke would have spikes.
  const band = (context, line, thick, color, alpha) => {
    const half = thick / 2;
    const middle = (line.from.x + line.to.x) / 2;
    context.fillStyle = color;
    context.globalAlpha = alpha;
    context.beginPath();
    context.moveTo(line.from.x, line.start - half);
    context.bezierCurveTo(middle, line.start - half, middle, line.end - half, line.to.x, line.end - half);
    context.lineTo(line.to.x, line.end + half);
    context.bezierCurveTo(middle, line.end + half, middle, line.start + half, line.from.x,
      line.start + half);
    context.fill();
  };

  const drawSpread = (context, network, arcs, width, layout, colors) => {
    const starts = new Map();
    const ends = new Map();
    const offset = (map, box, thick) => {
      const at = map.get(box) || 0;
      map.set(box, at + thick);
      return box.y + at + thick / 2;
    };
    const lines = arcs.map(([from, to, flow]) => ({
      from: layout.used.get(from), to: layout.used.get(to), thick: flow * layout.scale, flow,
      isTrim: network.nodes[to].kind === "waste",
    }));
    lines.sort((a, b) => a.to.y - b.to.y);
    for (const line of lines) {
      line.start = offset(starts, line.from, line.thick);
    }
    lines.sort((a, b) => a.from.y - b.from.y);
    for (const line of lines) {
      line.end = offset(ends, line.to, line.thick);
      const color = line.isTrim ? colors.trim : line.flow > 0 ? colors.accent : colors.quiet;
      band(context, line, Math.max(0.5, line.thick), color, line.flow > 0 ? 0.4 : 0.12);
    }
    context.globalAlpha = 1;
    for (const box of layout.used.values()) {
      const node = network.nodes[box.node];
      context.fillStyle = node.kind === "waste" ? colors.trim : colors.ink;
      context.fillRect(box.x - 2, box.y - 0.75, 4, Math.max(1.5, box.tall + 1.5));
      // A name that would run into the next column is left out.
      const isLast = box.x + layout.step > width;
      if (box.gap >= 12 && (isLast || context.measureText(node.name).width < layout.step - 14)) {
        const isFirst = node.kind === "machine";
        context.textAlign = isFirst ? "right" : "left";
        label(context, colors, node.name, box.x + (isFirst ? -7 : 6), box.y + box.tall / 2 + 3,
          isFirst ? 80 : isLast ? layout.room : Infinity);
      }
    }
    drawLegend(context, layout, colors);
  };

  const drawPlaces = (context, network, arcs, width, height, colors) => {
    const drawn = [...new Set(arcs.flatMap((arc) => [arc[0], arc[1]]))].map((i) => network.nodes[i]);
    const most = (read) => drawn.reduce((value, node) => Math.max(value, read(node)), 1);
    const scaleX = (width - 120) / most((node) => node.x);
    const scaleY = (height - 40) / most((node) => node.y);
    const x = (node) => 40 + node.x * scaleX;
    const y = (node) => 20 + node.y * scaleY;
    const largest = arcs.reduce((value, arc) => Math.max(value, arc[2]), 0);
    for (const [from, to, flow] of arcs) {
      context.strokeStyle = network.nodes[to].kind === "waste" ? colors.trim
        : flow > 0 ? colors.accent : colors.quiet;
      context.globalAlpha = flow > 0 ? 0.4 : 0.12;
      context.lineWidth = Math.max(0.5, largest > 0 ? 18 * flow / largest : 0);
      context.beginPath();
      context.moveTo(x(network.nodes[from]), y(network.nodes[from]));
      context.lineTo(x(network.nodes[to]), y(network.nodes[to]));
      context.stroke();
    }
    context.globalAlpha = 1;
    context.fillStyle = colors.ink;
    for (const node of drawn) {
      context.fillRect(x(node) - 2, y(node) - 2, 4, 4);
    }
  };

  let network = null;
  const grade = element("select");
  const all = element("input", {type: "checkbox"});
  const atPlaces = element("input", {type: "checkbox"});
  const canvas = element("canvas");
  canvas.setAttribute("role", "img");
  canvas.setAttribute("aria-label", "Drawing of the network. The tables below tell its nodes and flows.");

  // The room that the names behind the last column want, if there is any for them.
  const roomOf = (context, arcs, tallest) => {
    const names = new Set(arcs.map((arc) => network.nodes[arc[1]]).filter((node) =>
      node.kind === "order").map((node) => node.name));
    return names.size * 12 > tallest ? 60 : Math.min(260, [...names].reduce((most, name) =>
      Math.max(most, context.measureText(name).width), 60) + 12);
  };

  const draw = (forPrint) => {
    if (!network || !place.clientWidth) {
      return;
    }
    const arcs = chosen(network, grade.value, all.checked);
    // On a narrow screen the drawing is wider than its box, which scrolls; on paper it is one sheet.
    const onPaper = forPrint === true;
    const width = onPaper ? 1060 : Math.max(760, canvas.parentElement.clientWidth);
    const measure = canvas.getContext("2d");
    measure.font = "10px system-ui, sans-serif";
    const tallest = onPaper ? 600 : 2400;
    const layout = spread(network, arcs, width, roomOf(measure, arcs, tallest), tallest);
    const ratio = onPaper ? 2 : Math.min(devicePixelRatio || 1, 2);
    canvas.width = width * ratio;
    canvas.height = layout.height * ratio;
    canvas.style.width = width + "px";
    canvas.style.height = layout.height + "px";
    const context = canvas.getContext("2d");
    context.scale(ratio, ratio);
    context.font = "10px system-ui, sans-serif";
    const colors = onPaper ? colorsOnPaper : colorsOf();
    if (atPlaces.checked) {
      drawPlaces(context, network, arcs, width, layout.height, colors);
    } else {
      drawSpread(context, network, arcs, width, layout, colors);
    }
    place.dataset.arcs = arcs.length;
  };

  const start = () => {
    network = readNetwork();
    grade.append(element("option", {value: ""}, "All grades"),
      ...network.grades.map((name) => element("option", {value: name}, name)));
    draw();
  };

  const tools = element("div", {className: "tools"}, element("label", {}, "Grade ", grade));
  if ("plan" in place.dataset) {
    tools.append(element("label", {}, all, " also what carries nothing"));
  }
  tools.append(element("label", {}, atPlaces, " at the file\u2019s coordinates"));
  const box = element("div", {className: "box", tabIndex: 0}, canvas);
  box.setAttribute("role", "region");
  box.setAttribute("aria-label", "Network drawing");
  place.append(tools, box);
  place.hidden = false;
  for (const choice of [grade, all, atPlaces]) {
    choice.addEventListener("change", draw);
  }
  // Not before it comes near: reading and laying out a large network takes a while.
  new IntersectionObserver((entries, observer) => {
    if (entries.some((entry) => entry.isIntersecting)) {
      observer.disconnect();
      network || start();
    }
  }, {rootMargin: "400px"}).observe(place);
  addEventListener("beforeprint", () => {
    network || start();
    draw(true);
  });
  addEventListener("afterprint", draw);
  addEventListener("resize", draw);
  matchMedia("(prefers-color-scheme: dark)").addEventListener("change", draw);
})();
