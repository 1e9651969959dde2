// Archives that no folder has to hold: the data of a page for any number of documents, the same for the same seed.
'use strict';

const fs = require('node:fs');
const path = require('node:path');

const SOURCES = path.join(__dirname, '../../tools/vorntools/page');

/** @param {number} seed */
function lot(seed) {
    let state = seed >>> 0;
    return (/** @type {number} */ below) => {
        state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
        return Math.floor((state / 4294967296) * below);
    };
}

const PARTS = ['BRACKET', 'Wellenlager', 'HOUSING', 'Cover', 'SCREW_M8', 'support-plate', 'Gear', 'Dichtung', 'SHAFT'];
const ROOMS = ['wing', 'pump', 'gear', 'frame', 'tooling', 'wiring'];
const RULES = ['as stored', 'relative', 'moved along', 'tree above', 'by name'];

/** Folders of 50 documents; a product points to later ones, mostly of its own neighbourhood.
 * @param {number} size documents @param {number} [seed] */
function madeArchive(size, seed = 1) {
    const any = lot(seed);
    const data = emptyData();
    for (let at = 0; at < size; at += 50) {
        const folder = String(at / 50).padStart(4, '0');
        data.folders.push(`archive/${folder}/${ROOMS[any(ROOMS.length)]}/`);
        data.in_folder.push(Math.min(50, size - at));
    }
    data.states = [
        ['not modified', 'file and DAT file agree'],
        ['new', 'no DAT file'],
        ['modified', 'file changed since it was loaded'],
    ];
    data.versions = ['5.21.4', '5.28.6', '5.30.2'];
    data.load_types = ['', 'primary', 'reference'];
    const isProduct = new Array(size);
    for (let i = 0; i < size; i++) {
        const kind = any(100);
        isProduct[i] = kind < 22;
        const suffix = kind < 22 ? 'CATProduct' : kind < 27 ? 'CATDrawing' : 'CATPart';
        const number = String(any(100) < 97 ? i : any(size)).padStart(6, '0');
        data.name.push(`${PARTS[any(PARTS.length)]}_${number}_${'ABCDEF'[any(6)]}.${suffix}`);
        const state = any(100);
        data.state.push(state < 76 ? 0 : state < 86 ? 1 : 2);
        data.version.push(any(3));
        data.size.push(80000 + any(4000000));
        data.changed.push(1500000000 + any(260000000));
        const isKnown = data.state[i] !== 1;
        for (const column of [data.item_revision, data.dataset, data.named_reference])
            column.push(isKnown ? (any(2 ** 31) + 2 ** 31).toString(36).padStart(14, 'xR7Q4mAAAAAAAA') : '');
        data.load_type.push(isKnown ? 1 : 0);
        if (any(100) === 0) {
            data.condition.of.push(i);
            data.condition_finding.push(1);
            data.condition.text.push(['cut off', 'damaged', 'not a CATIA document'][any(3)]);
        } else if (any(400) === 0) data.unread.push(i);
        if (any(50) === 0) {
            data.ghosts.of.push(i);
            data.ghosts.name.push(`D:\\old\\Ghost_${i}.CATPart`);
            data.ghosts.live.push(any(2));
        }
    }
    const hows = new Map();
    const how = (/** @type {[string, string, number, number]} */ ...row) => {
        const key = row.join('|');
        if (!hows.has(key)) hows.set(key, data.hows.push(row) - 1);
        return hows.get(key);
    };
    for (let i = 0; i < size; i++) {
        const targets = new Set();
        const wanted = isProduct[i]
            ? 3 + any(18) + (any(200) === 0 ? 60 : 0)
            : data.name[i].endsWith('g')
              ? 1
              : any(5) === 0
                ? 1
                : 0;
        for (let n = 0; n < wanted; n++) {
            const near = any(10) < 7 ? i + 1 + any(60) : any(size);
            if (near < size) targets.add(near);
        }
        for (const target of targets) {
            data.links.to.push(target);
            data.links.how.push(
                how(
                    isProduct[i] ? 'part file, MML' : 'MMLDrawing',
                    RULES[any(5)],
                    1 + any(isProduct[i] ? 6 : 1),
                    any(40) === 0 ? 1 : 0,
                ),
            );
        }
        let count = targets.size;
        if (wanted > 0 && any(9) === 0) {
            data.links.to.push(size + data.others.name.length);
            data.links.how.push(how('part file', 'not found', 1, 0));
            addMissing(data, any, size);
            count++;
        } else if (wanted > 0 && data.others.name.length > 0 && any(12) === 0) {
            data.links.to.push(size + any(data.others.name.length));
            data.links.how.push(how('part file', 'not found', 2, 0));
            count++;
        }
        data.links.count.push(count);
    }
    for (let n = 0; n < size / 100; n++)
        data.duplicates.push([['same bytes', 'same save', 'saved apart', 'strangers'][any(4)], pairOf(any, size)]);
    const used = new Set(data.links.to);
    data.name.forEach((name, i) => {
        if (!used.has(i) && name.endsWith('Part')) data.orphans.push(i);
    });
    return data;
}

/** @param {(below: number) => number} any @param {number} size */
function pairOf(any, size) {
    const first = any(size);
    return [first, (first + 1 + any(size - 1)) % size].sort((a, b) => a - b);
}

function addMissing(data, any, size) {
    const { others } = data;
    if (any(20) === 0) others.there.push(others.name.length);
    const isThere = others.there[others.there.length - 1] === others.name.length;
    const candidates = isThere ? 0 : [0, 0, 1, 1, 3][any(5)];
    const meant = any(size);
    others.name.push(
        `D:\\projects\\${ROOMS[any(ROOMS.length)]}\\old\\` +
            (candidates > 0 ? data.name[meant] : `Gone_${others.name.length}.CATPart`),
    );
    others.count.push(candidates);
    others.total.push(candidates);
    for (let n = 0; n < candidates; n++) {
        others.to.push((meant + n * 7919) % size);
        others.agree.push(any(4));
    }
}

/** The data of a page about nothing. @returns {any} */
function emptyData() {
    return {
        format: 1,
        program: 'vorntools 1.0.0',
        looked_at: ['/data/archive'],
        date: '2026-01-31T12:00:00Z',
        seconds: 12.3,
        complaints: [],
        folders: [],
        in_folder: [],
        states: [],
        versions: [],
        load_types: [],
        name: [],
        state: [],
        version: [],
        size: [],
        changed: [],
        item_revision: [],
        dataset: [],
        named_reference: [],
        load_type: [],
        unread: [],
        gone: [],
        condition: { of: [], text: [] },
        condition_finding: [],
        notes: { of: [], text: [] },
        hows: [],
        links: { count: [], to: [], how: [] },
        others: { name: [], there: [], count: [], total: [], to: [], agree: [] },
        ghosts: { of: [], name: [], live: [] },
        duplicates: [],
        orphans: [],
    };
}

/** The whole page as the program puts it together. @param {any} data @param {string} [pictures] the blocks and what
 * tells where they are */
function pageOf(data, pictures = '<script type="application/json" id="pictures">{"kind":"none"}</script>\n') {
    const read = (/** @type {string} */ name) => fs.readFileSync(path.join(SOURCES, name), 'utf8');
    const json = JSON.stringify(data).replace(/</g, '\\u003c');
    return read('page.html')
        .replace('<!-- page.css -->', () => `<style>\n${read('page.css')}</style>`)
        .replace('<!-- data -->', () => `<script type="application/json" id="data">${json}</script>\n${pictures}`)
        .replace('<!-- model.js page.js -->', () => `<script>\n${read('model.js')}${read('page.js')}</script>`);
}

if (require.main === module) {
    const [size, file] = process.argv.slice(2);
    fs.writeFileSync(file, pageOf(madeArchive(Number(size))));
}

module.exports = { emptyData, madeArchive, pageOf };
