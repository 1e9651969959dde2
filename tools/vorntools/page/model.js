// What the page knows of an archive: search, order, links both ways, trees, the drawing's layout, the repair list.
// Nothing here touches the document; page.js draws it.
'use strict';

/**
 * @typedef {{of: number[], text: string[]}} Sparse texts of some documents, by document
 * @typedef {{count: number[], to: number[], how: number[]}} Links rows of targets, one row a document
 * @typedef {{name: string[], there: number[], count: number[], total: number[], to: number[], agree: number[]}} Others
 * @typedef {{
 *   format: number, program: string, looked_at: string[], date: string, seconds: number, complaints: string[],
 *   folders: string[], in_folder: number[], states: string[][], versions: string[], load_types: string[],
 *   name: string[], state: number[], version: number[], size: number[], changed: number[],
 *   item_revision: string[], dataset: string[], named_reference: string[], load_type: number[],
 *   unread: number[], gone: number[], condition: Sparse, condition_finding: number[], notes: Sparse,
 *   hows: [string, string, number, number][], links: Links, others: Others,
 *   ghosts: {of: number[], name: string[], live: number[]}, duplicates: [string, number[]][],
 *   orphans: number[]
 * }} Data as the program writes it into the page; docs/report.md tells what each member holds
 */

/** A document's findings, as bits; the higher the worse. */
const ORPHAN = 1;
const DUPLICATE = 2;
const NOTED = 4;
const NEW = 8;
const MODIFIED = 16;
const MISSING = 32;
const DAMAGED = 64;

/** @type {Record<string, number>} what a tile shows, by its name in the address */
const SHOWN = {
    missing: MISSING,
    damaged: DAMAGED,
    new: NEW,
    modified: MODIFIED,
    duplicates: DUPLICATE,
    orphans: ORPHAN,
};

/** In the place of a link: the line is a candidate for the missing document above. */
const CANDIDATE = -1;

const NO_NODES = new Uint32Array(0);

/** @param {number[]} counts @returns {Uint32Array} where each row begins, and behind the last one its end */
function startsOf(counts) {
    const starts = new Uint32Array(counts.length + 1);
    for (let i = 0; i < counts.length; i++) starts[i + 1] = starts[i] + counts[i];
    return starts;
}

/** @param {Sparse} sparse @returns {Map<number, string[]>} */
function byDocument(sparse) {
    const map = new Map();
    sparse.of.forEach((document, i) => {
        const texts = map.get(document);
        if (texts) texts.push(sparse.text[i]);
        else map.set(document, [sparse.text[i]]);
    });
    return map;
}

/**
 * Nodes are numbered: first the documents that were looked at, then what else they point to: files elsewhere and what is
 * missing.
 */
class Archive {
    /** @param {Data} data */
    constructor(data) {
        this.data = data;
        this.size = data.name.length;
        this.nodes = this.size + data.others.name.length;
        this.folderOf = new Uint32Array(this.size);
        let at = 0;
        data.in_folder.forEach((count, folder) => {
            this.folderOf.fill(folder, at, at + count);
            at += count;
        });
        this.linksAt = startsOf(data.links.count);
        this.targets = Uint32Array.from(data.links.to);
        this.candidatesAt = startsOf(data.others.count);
        this.isThere = new Uint8Array(this.nodes).fill(1, 0, this.size);
        for (const other of data.others.there) this.isThere[this.size + other] = 1;
        this.usersAt = startsOf([]);
        this.users = NO_NODES;
        this.userLinks = NO_NODES;
        this.reverse();
        this.conditions = byDocument(data.condition);
        this.notes = byDocument(data.notes);
        this.unread = new Set(data.unread);
        /** @type {Map<number, {kind: string, documents: number[]}[]>} */
        this.duplicates = new Map();
        for (const [kind, documents] of data.duplicates)
            for (const document of documents) {
                const groups = this.duplicates.get(document) || [];
                groups.push({ kind, documents });
                this.duplicates.set(document, groups);
            }
        this.findings = new Uint8Array(this.size);
        this.missingLinks = new Uint32Array(this.size);
        this.judge();
        /** @type {string[] | undefined} */
        this.texts = undefined;
        /** @type {Map<string, number> | undefined} */
        this.keys = undefined;
    }

    /** Links backwards: who points to each node, and through which link. */
    reverse() {
        const counts = new Array(this.nodes).fill(0);
        for (const target of this.targets) counts[target]++;
        this.usersAt = startsOf(counts);
        this.users = new Uint32Array(this.targets.length);
        this.userLinks = new Uint32Array(this.targets.length);
        const next = this.usersAt.slice();
        for (let document = 0; document < this.size; document++)
            for (let link = this.linksAt[document]; link < this.linksAt[document + 1]; link++) {
                const place = next[this.targets[link]]++;
                this.users[place] = document;
                this.userLinks[place] = link;
            }
    }

    judge() {
        const { data } = this;
        const states = data.states.map(([status]) => (status === 'new' ? NEW : status === 'modified' ? MODIFIED : 0));
        for (let i = 0; i < this.size; i++) {
            let findings = states[data.state[i]];
            for (let link = this.linksAt[i]; link < this.linksAt[i + 1]; link++)
                if (!this.isThere[this.targets[link]]) this.missingLinks[i]++;
            if (this.missingLinks[i] > 0) findings |= MISSING;
            if (this.notes.has(i)) findings |= NOTED;
            if (this.duplicates.has(i)) findings |= DUPLICATE;
            this.findings[i] = findings;
        }
        data.condition.of.forEach((document, i) => {
            if (data.condition_finding[i] > 0) this.findings[document] |= DAMAGED;
        });
        for (const document of data.orphans) this.findings[document] |= ORPHAN;
        for (const document of this.unread) this.findings[document] |= DAMAGED;
    }

    /** @param {number} node */
    isDocument(node) {
        return node < this.size;
    }
    /** @param {number} node @returns {string} of a document its file's name, of another node its name as stored */
    nameOf(node) {
        return this.isDocument(node) ? this.data.name[node] : this.data.others.name[node - this.size];
    }
    /** @param {number} node the name of its file alone */
    fileNameOf(node) {
        const name = this.nameOf(node);
        return this.isDocument(node) ? name : name.slice(Math.max(name.lastIndexOf('/'), name.lastIndexOf('\\')) + 1);
    }
    /** @param {number} node */
    folderNameOf(node) {
        if (this.isDocument(node)) return this.data.folders[this.folderOf[node]];
        return this.nameOf(node).slice(0, -this.fileNameOf(node).length);
    }
    /** @param {number} node @returns {string} the whole name, by which the address and the program know it */
    pathOf(node) {
        return this.isDocument(node) ? this.folderNameOf(node) + this.data.name[node] : this.nameOf(node);
    }
    /** @param {string} path @returns {number} the node of that name, -1 for none */
    find(path) {
        if (!this.keys) {
            this.keys = new Map();
            for (let node = this.nodes - 1; node >= 0; node--) this.keys.set(this.pathOf(node), node);
        }
        return this.keys.get(path) ?? -1;
    }

    /** @param {number} node */
    targetsOf(node) {
        return this.isDocument(node) ? this.targets.subarray(this.linksAt[node], this.linksAt[node + 1]) : NO_NODES;
    }
    /** @param {number} node */
    usersOf(node) {
        return this.users.subarray(this.usersAt[node], this.usersAt[node + 1]);
    }
    /**
     * Lines of a tree one level down or up; below what is missing stand its candidates.
     * @param {number} node @param {'uses' | 'used by'} direction
     * @returns {{node: number, link: number}[]}
     */
    linesOf(node, direction) {
        const lines = [];
        if (direction === 'uses' && this.isDocument(node))
            for (let link = this.linksAt[node]; link < this.linksAt[node + 1]; link++)
                lines.push({ node: this.targets[link], link });
        if (direction === 'uses')
            for (const candidate of this.candidatesOf(node)) lines.push({ node: candidate.node, link: CANDIDATE });
        if (direction === 'used by')
            for (let place = this.usersAt[node]; place < this.usersAt[node + 1]; place++)
                lines.push({ node: this.users[place], link: this.userLinks[place] });
        return lines;
    }
    /** @param {number} link */
    howOf(link) {
        const [kinds, rule, uses, several] = this.data.hows[this.data.links.how[link]];
        return { kinds, rule, uses, isChosen: several > 0 };
    }
    /** @param {number} node @returns {{node: number, agree: number}[]} files of a missing one's name, nearest first */
    candidatesOf(node) {
        const other = node - this.size;
        if (other < 0) return [];
        const candidates = [];
        for (let i = this.candidatesAt[other]; i < this.candidatesAt[other + 1]; i++)
            candidates.push({ node: this.data.others.to[i], agree: this.data.others.agree[i] });
        return candidates;
    }
    /** @param {number} node @returns {number} how many files have a missing one's name: more than are listed */
    candidateCountOf(node) {
        return this.isDocument(node) ? 0 : this.data.others.total[node - this.size];
    }
    /** @param {number} document @returns {{name: string, isLive: boolean}[]} */
    ghostsOf(document) {
        const { of, name, live } = this.data.ghosts;
        const ghosts = [];
        for (let i = lowerBound(of, document); i < of.length && of[i] === document; i++)
            ghosts.push({ name: name[i], isLive: live[i] > 0 });
        return ghosts;
    }
    /** @param {number} document @returns {{kind: string, text: string}[]} its findings in words, the worst first */
    wordsOf(document) {
        const words = [];
        const findings = this.findings[document];
        if (this.unread.has(document)) words.push({ kind: 'damaged', text: 'cannot be read' });
        for (const text of this.conditions.get(document) || [])
            words.push({ kind: findings & DAMAGED ? 'damaged' : 'noted', text });
        if (findings & MISSING) words.push({ kind: 'missing', text: this.missingLinks[document] + ' missing' });
        if (findings & MODIFIED) words.push({ kind: 'modified', text: 'modified' });
        if (findings & NEW) words.push({ kind: 'new', text: 'new' });
        if (findings & NOTED) words.push({ kind: 'noted', text: 'note' });
        if (findings & DUPLICATE) words.push({ kind: 'duplicates', text: 'duplicate' });
        if (findings & ORPHAN) words.push({ kind: 'orphans', text: 'orphan' });
        return words;
    }

    /** @returns {string[]} what a search looks at, of each node */
    searchTexts() {
        if (!this.texts) {
            const folders = this.data.folders.map((folder) => folder.toLowerCase());
            this.texts = new Array(this.nodes);
            for (let i = 0; i < this.size; i++)
                this.texts[i] =
                    folders[this.folderOf[i]] +
                    this.data.name[i].toLowerCase() +
                    '\n' +
                    this.data.item_revision[i].toLowerCase();
            for (let i = this.size; i < this.nodes; i++) this.texts[i] = this.nameOf(i).toLowerCase();
        }
        return this.texts;
    }

    /** @returns {number[]} the nodes that somebody points to and nobody finds */
    missing() {
        const missing = [];
        for (let node = this.size; node < this.nodes; node++) if (!this.isThere[node]) missing.push(node);
        return missing;
    }
}

/** @param {number[]} sorted @param {number} value @returns {number} the first place whose number is not smaller */
function lowerBound(sorted, value) {
    let low = 0;
    let high = sorted.length;
    while (low < high) {
        const middle = (low + high) >> 1;
        if (sorted[middle] < value) low = middle + 1;
        else high = middle;
    }
    return low;
}

/** @param {string} query @returns {string[]} */
function wordsIn(query) {
    return query.toLowerCase().split(/\s+/).filter(Boolean);
}

/** @typedef {(archive: Archive) => (a: number, b: number) => number} Order says which of two nodes comes first */

/** @type {Record<string, Order>} */
const ORDERS = {
    problems: (archive) => {
        const { findings, missingLinks } = archive;
        const grave = (/** @type {number} */ node) => findings[node] & ~(ORPHAN | DUPLICATE);
        const worst = Uint8Array.from(findings, (_, node) => 32 - Math.clz32(grave(node)));
        return (a, b) => worst[b] - worst[a] || missingLinks[b] - missingLinks[a];
    },
    name: (archive) => {
        const names = Array.from({ length: archive.nodes }, (_, node) => archive.fileNameOf(node).toLowerCase());
        return (a, b) => (names[a] < names[b] ? -1 : names[a] > names[b] ? 1 : 0);
    },
    folder: () => (a, b) => a - b,
    uses: (archive) => {
        const { linksAt } = archive;
        const count = (/** @type {number} */ node) => linksAt[node + 1] - linksAt[node];
        return (a, b) => count(b) - count(a);
    },
    users: (archive) => {
        const { usersAt } = archive;
        const count = (/** @type {number} */ node) => usersAt[node + 1] - usersAt[node];
        return (a, b) => count(b) - count(a);
    },
    changed: (archive) => {
        const { changed } = archive.data;
        return (a, b) => changed[b] - changed[a];
    },
    candidates: (archive) => {
        return (a, b) => archive.candidateCountOf(b) - archive.candidateCountOf(a);
    },
};

/** Rows for the tables. It remembers what an order costs to make and each order's whole list. */
class Finder {
    /** @param {Archive} archive */
    constructor(archive) {
        this.archive = archive;
        /** @type {Map<string, Uint32Array>} */
        this.ordered = new Map();
    }

    /** @param {'documents' | 'repair'} view @param {string} sort an order, reversed with "-" in front */
    all(view, sort) {
        const key = view + ' ' + sort;
        let nodes = this.ordered.get(key);
        if (!nodes) {
            const { archive } = this;
            nodes =
                view === 'repair'
                    ? Uint32Array.from(archive.missing())
                    : Uint32Array.from({ length: archive.size }, (_, i) => i);
            const order = ORDERS[sort.replace('-', '')] || ORDERS.folder;
            nodes.sort(order(archive));
            if (sort.startsWith('-')) nodes.reverse();
            this.ordered.set(key, nodes);
        }
        return nodes;
    }

    /**
     * @param {{view: 'documents' | 'repair', q: string, show: string, sort: string}} wanted
     * @returns {{rows: Uint32Array, counts: Record<string, number>}} the rows in their order; how many documents each
     * tile would show of this search, "all" for no tile
     */
    find({ view, q, show, sort }) {
        const { archive } = this;
        const nodes = this.all(view, sort);
        const words = wordsIn(q);
        const texts = words.length > 0 ? archive.searchTexts() : [];
        const bits = (view === 'documents' && SHOWN[show]) || 0;
        const rows = new Uint32Array(nodes.length);
        const histogram = new Uint32Array(256);
        let count = 0;
        for (const node of nodes) {
            if (words.length > 0 && !words.every((word) => texts[node].includes(word))) continue;
            const findings = view === 'documents' ? archive.findings[node] : 0;
            histogram[findings]++;
            if (bits === 0 || findings & bits) rows[count++] = node;
        }
        return { rows: rows.slice(0, count), counts: countsOf(histogram) };
    }
}

/** @param {Uint32Array} histogram how many documents have each set of findings @returns {Record<string, number>} */
function countsOf(histogram) {
    /** @type {Record<string, number>} */
    const counts = { all: histogram.reduce((sum, count) => sum + count, 0) };
    for (const [show, bit] of Object.entries(SHOWN))
        counts[show] = histogram.reduce((sum, count, findings) => sum + (findings & bit ? count : 0), 0);
    return counts;
}

/** A tree that opens level by level, as the list of its visible lines. */
class Tree {
    /** @param {Archive} archive @param {number} root @param {'uses' | 'used by'} direction */
    constructor(archive, root, direction) {
        this.archive = archive;
        this.direction = direction;
        /** @type {{node: number, link: number, level: number, place: number, of: number, isOpen: boolean, above: number[]}[]} */
        this.lines = [];
        this.insert(0, root, 1, [root]);
    }

    /** @param {number} at @param {number} node @param {number} level @param {number[]} above nodes on the way here */
    insert(at, node, level, above) {
        const below = this.archive.linesOf(node, this.direction);
        const lines = below.map(({ node: child, link }, place) => ({
            node: child,
            link,
            level,
            place: place + 1,
            of: below.length,
            isOpen: false,
            above,
        }));
        this.lines = this.lines.slice(0, at).concat(lines, this.lines.slice(at));
    }

    /** @param {number} at @returns {boolean} whether the document is the one that the line stands below: a loop */
    isLoop(at) {
        return this.lines[at].above.includes(this.lines[at].node);
    }
    /** @param {number} at */
    canOpen(at) {
        const { node } = this.lines[at];
        if (this.isLoop(at)) return false;
        const { archive } = this;
        if (this.direction === 'used by') return archive.usersOf(node).length > 0;
        return archive.targetsOf(node).length > 0 || archive.candidatesOf(node).length > 0;
    }
    /** @param {number} at a line, which opens, or closes with all below */
    toggle(at) {
        const line = this.lines[at];
        if (!this.canOpen(at)) return;
        line.isOpen = !line.isOpen;
        if (line.isOpen) {
            this.insert(at + 1, line.node, line.level + 1, [...line.above, line.node]);
            return;
        }
        let end = at + 1;
        while (end < this.lines.length && this.lines[end].level > line.level) end++;
        this.lines.splice(at + 1, end - at - 1);
    }
    /** @param {number} at @returns {number} the line that it hangs from, -1 on top */
    parentOf(at) {
        let parent = at - 1;
        while (parent >= 0 && this.lines[parent].level >= this.lines[at].level) parent--;
        return parent;
    }
}

/**
 * The drawing of a node's neighbourhood: two columns of users on the left, two of what it uses on the right. Each node
 * stands in the nearest column of its side; lines run between neighbouring columns only, so that none crosses a box.
 * @param {Archive} archive @param {number} node @param {Record<number, number>} limits boxes a column, by column -2 to 2
 * @returns {{columns: {column: number, boxes: number[], more: number}[], lines: [number, number, number][]}} a line is
 * the index of its left column in "columns" and of its boxes in both
 */
function neighbourhood(archive, node, limits) {
    /** @type {{column: number, boxes: number[], more: number}[]} */
    const columns = [{ column: 0, boxes: [node], more: 0 }];
    for (const side of [-1, 1]) {
        const next = (/** @type {number} */ of) => (side < 0 ? archive.usersOf(of) : archive.targetsOf(of));
        const seen = new Set([node]);
        let nearer = [node];
        for (const column of [side, 2 * side]) {
            const { boxes, more } = columnOf(archive, nearer, next, seen, limits[column] || BOXES);
            if (boxes.length === 0) break;
            const entry = { column, boxes, more };
            if (side < 0) columns.unshift(entry);
            else columns.push(entry);
            nearer = boxes;
        }
    }
    return { columns, lines: linesBetween(archive, columns) };
}

const BOXES = 8;

/**
 * Takes turns among the nearer nodes, so that each shows some of its own; what is missing comes first.
 * @param {Archive} archive @param {number[]} nearer @param {(node: number) => Uint32Array} next
 * @param {Set<number>} seen @param {number} most
 */
function columnOf(archive, nearer, next, seen, most) {
    const lists = nearer.map((node) => {
        const list = next(node);
        return [list.filter((other) => !archive.isThere[other]), list.filter((other) => archive.isThere[other] > 0)];
    });
    /** @type {number[][]} */
    const taken = nearer.map(() => []);
    let count = 0;
    const turns = lists.map(([missing, there]) => [
        ...missing.subarray(0, most + seen.size),
        ...there.subarray(0, most + seen.size),
    ]);
    const longest = Math.max(...turns.map((list) => list.length));
    for (let turn = 0; turn < longest && count < most; turn++)
        turns.forEach((list, i) => {
            if (turn >= list.length || count >= most || seen.has(list[turn])) return;
            seen.add(list[turn]);
            taken[i].push(list[turn]);
            count++;
        });
    const left = new Set();
    for (const parts of lists)
        for (const part of parts)
            for (const other of part) {
                if (left.size >= 100000) break;
                if (!seen.has(other)) left.add(other);
            }
    return { boxes: taken.flat(), more: left.size };
}

/**
 * @param {Archive} archive @param {{boxes: number[]}[]} columns
 * @returns {[number, number, number][]}
 */
function linesBetween(archive, columns) {
    /** @type {[number, number, number][]} */
    const lines = [];
    for (let i = 0; i + 1 < columns.length; i++) {
        const places = new Map(columns[i + 1].boxes.map((node, place) => [node, place]));
        columns[i].boxes.forEach((from, place) => {
            for (const to of archive.targetsOf(from)) {
                const target = places.get(to);
                if (target !== undefined) lines.push([i, place, target]);
            }
        });
    }
    return lines;
}

const BOX = { height: 28, gap: 6, gutter: 28, edge: 14, top: 26, narrowest: 92, widest: 200 };

/**
 * Puts the boxes of a drawing into columns of one width, around the middle.
 * @param {Archive} archive @param {ReturnType<typeof neighbourhood>} drawing @param {number} room pixels to the side
 * @returns {{width: number, height: number, boxWidth: number,
 *   boxes: {node: number, column: number, x: number, y: number, more: number}[],
 *   lines: {from: number[], to: number[], isMissing: boolean}[]}} a box without node stands for "more" others; the lines
 * run from the right edge of a box to the left edge of one in the next column
 */
function layOut(archive, { columns, lines }, room) {
    const count = columns.length;
    const fitting = Math.floor((room - 2 * BOX.edge - (count - 1) * BOX.gutter) / count);
    const boxWidth = Math.min(Math.max(fitting, BOX.narrowest), BOX.widest);
    const step = BOX.height + BOX.gap;
    const tallest = Math.max(...columns.map(({ boxes, more }) => boxes.length + (more > 0 ? 1 : 0)));
    const middle = BOX.top + (tallest * step) / 2;
    const left = (/** @type {number} */ i) => BOX.edge + i * (boxWidth + BOX.gutter);
    const top = (/** @type {number} */ i, /** @type {number} */ place) =>
        middle - (columns[i].boxes.length * step) / 2 + place * step;
    const boxes = columns.flatMap(({ column, boxes: nodes, more }, i) => {
        const placed = nodes.map((node, place) => ({ node, column, x: left(i), y: top(i, place), more: 0 }));
        const last = { node: -1, column, x: left(i), y: top(i, nodes.length), more };
        return more > 0 ? [...placed, last] : placed;
    });
    return {
        width: 2 * BOX.edge + count * boxWidth + (count - 1) * BOX.gutter,
        height: Math.max(...boxes.map(({ y }) => y)) + step + BOX.edge - BOX.gap,
        boxWidth,
        boxes,
        lines: lines.map(([i, from, to]) => ({
            from: [left(i) + boxWidth, top(i, from) + BOX.height / 2],
            to: [left(i + 1), top(i + 1, to) + BOX.height / 2],
            isMissing: !archive.isThere[columns[i + 1].boxes[to]],
        })),
    };
}

/**
 * The shortest way from a document that nobody uses down to a node; the node alone when nobody leads there.
 * @param {Archive} archive @param {number} node @returns {number[]}
 */
function wayFromTop(archive, node) {
    /** @type {Map<number, number>} */
    const below = new Map([[node, -1]]);
    const queue = [node];
    let top = node;
    for (let i = 0; i < queue.length; i++) {
        const users = archive.usersOf(queue[i]);
        if (users.length === 0) {
            top = queue[i];
            break;
        }
        for (const user of users)
            if (!below.has(user)) {
                below.set(user, queue[i]);
                queue.push(user);
            }
    }
    const way = [];
    for (let at = top; at >= 0; at = below.get(at) ?? -1) way.push(at);
    return way;
}

/**
 * The repair list of some missing nodes.
 * @param {Archive} archive @param {ArrayLike<number>} nodes
 */
function repairs(archive, nodes) {
    return Array.from(nodes, (node) => ({
        wanted: archive.pathOf(node),
        wanted_by: Array.from(archive.usersOf(node), (user) => archive.pathOf(user)),
        candidate_count: archive.candidateCountOf(node),
        candidates: archive.candidatesOf(node).map(({ node: candidate, agree }) => ({
            document: archive.pathOf(candidate),
            agrees: agree,
        })),
    }));
}

/** @param {string | number} value @returns {string} a cell that a spreadsheet takes for text, not for a formula */
function cell(value) {
    const text = String(value);
    const guarded = /^[=+\-@\t\r]/.test(text) && typeof value === 'string' ? "'" + text : text;
    return /[",\r\n]/.test(guarded) ? '"' + guarded.replace(/"/g, '""') + '"' : guarded;
}

/** @param {(string | number)[][]} rows @returns {string} */
function csv(rows) {
    return rows.map((row) => row.map(cell).join(',') + '\r\n').join('');
}

/** @param {Archive} archive @param {ArrayLike<number>} nodes */
function repairsAsCsv(archive, nodes) {
    const rows = repairs(archive, nodes).map(({ wanted, wanted_by: users, candidates, candidate_count: count }) => [
        wanted,
        users.length,
        users.join('\n'),
        count,
        candidates.map(({ document }) => document).join('\n'),
    ]);
    return csv([['wanted', 'wanted by (count)', 'wanted by', 'candidates (count)', 'candidates'], ...rows]);
}

/** @param {Archive} archive @param {ArrayLike<number>} documents */
function documentsAsCsv(archive, documents) {
    const { data } = archive;
    const rows = Array.from(documents, (i) => [
        archive.pathOf(i),
        ...data.states[data.state[i]],
        archive
            .wordsOf(i)
            .map(({ text }) => text)
            .join('; '),
        archive.targetsOf(i).length,
        archive.usersOf(i).length,
        archive.missingLinks[i],
        data.size[i],
        dateOf(data.changed[i]),
        data.item_revision[i],
    ]);
    const titles = ['document', 'status', 'reason', 'findings', 'uses', 'used by', 'missing', 'bytes', 'changed'];
    return csv([[...titles, 'item revision'], ...rows]);
}

/** @param {Archive} archive @param {ArrayLike<number>} documents */
function documentsAsJson(archive, documents) {
    const { data } = archive;
    return Array.from(documents, (i) => ({
        document: archive.pathOf(i),
        status: data.states[data.state[i]][0],
        reason: data.states[data.state[i]][1],
        findings: archive.wordsOf(i).map(({ text }) => text),
        uses: Array.from(archive.targetsOf(i), (node) => archive.pathOf(node)),
        used_by: Array.from(archive.usersOf(i), (node) => archive.pathOf(node)),
        missing: archive.missingLinks[i],
        size: data.size[i],
        changed: dateOf(data.changed[i]),
        item_revision: data.item_revision[i],
    }));
}

/** @param {number} seconds since 1970 @returns {string} universal time, empty for none */
function dateOf(seconds) {
    return seconds > 0 ? new Date(seconds * 1000).toISOString().slice(0, 16).replace('T', ' ') : '';
}

/** @param {number} bytes */
function sizeOf(bytes) {
    if (bytes < 1000) return bytes + ' bytes';
    const units = ['KB', 'MB', 'GB'];
    let value = bytes / 1000;
    let unit = 0;
    while (value >= 999.5 && unit < 2) {
        value /= 1000;
        unit++;
    }
    return (value < 9.95 ? value.toFixed(1) : value.toFixed(0)) + ' ' + units[unit];
}

/** What stands in the middle of a long name can go; its end, with running number and suffix, stays.
 * @param {string} name @param {number} most letters of the end @returns {[string, string]} */
function halvesOf(name, most) {
    const letters = Array.from(name);
    const tail = Math.min(letters.length >> 1, most);
    return [letters.slice(0, letters.length - tail).join(''), letters.slice(letters.length - tail).join('')];
}

/** @param {string} name @returns {{stem: string, kind: string}} without the suffix of a CATIA document, and its letter */
function stemOf(name) {
    const match = /^(.+)\.cat(part|product|drawing)$/i.exec(name);
    return match
        ? { stem: match[1], kind: match[2].toLowerCase() === 'product' ? 'A' : match[2][0].toUpperCase() }
        : { stem: name, kind: '' };
}

/**
 * @typedef {{view: 'documents' | 'repair', q: string, show: string, sort: string, open: string}} View what is shown;
 * "open" is the path of the node that stands beside the list, empty for none
 */

/** @param {'documents' | 'repair'} view @returns {string} */
function defaultOrder(view) {
    return view === 'repair' ? 'users' : 'problems';
}

/** @param {string} hash of the address @returns {View} */
function viewOf(hash) {
    const given = new URLSearchParams(hash.replace(/^#/, ''));
    const view = given.get('view') === 'repair' ? 'repair' : 'documents';
    const show = given.get('show') || '';
    const sort = given.get('sort') || '';
    return {
        view,
        q: given.get('q') || '',
        show: Object.hasOwn(SHOWN, show) ? show : '',
        sort: Object.hasOwn(ORDERS, sort.replace('-', '')) ? sort : defaultOrder(view),
        open: given.get('open') || '',
    };
}

/** @param {View} view @returns {string} */
function addressOf(view) {
    const given = new URLSearchParams();
    if (view.view === 'repair') given.set('view', 'repair');
    if (view.q) given.set('q', view.q);
    if (view.show) given.set('show', view.show);
    if (view.sort !== defaultOrder(view.view)) given.set('sort', view.sort);
    if (view.open) given.set('open', view.open);
    return '#' + given.toString();
}

// In a browser there is no module, and all of this is the page's.
const loader = typeof module === 'object' ? module : undefined;
if (loader)
    loader.exports = {
        Archive,
        Finder,
        Tree,
        addressOf,
        csv,
        documentsAsCsv,
        documentsAsJson,
        halvesOf,
        layOut,
        neighbourhood,
        repairs,
        repairsAsCsv,
        sizeOf,
        stemOf,
        viewOf,
        wayFromTop,
    };
