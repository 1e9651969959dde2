// The model of the page, without any browser.
'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const { emptyData, madeArchive } = require('./made_archive.js');
const model = require('../../tools/vorntools/page/model.js');

const NAMES = ['Top.CATProduct', 'Sub.CATProduct', 'Bolt.CATPart', 'Sheet.CATDrawing', 'Lone.CATPart', 'BOLT.CATPart'];
const [TOP, SUB, BOLT, SHEET, LONE, BOLT2, CATALOG, GONE, ALSO_GONE] = [0, 1, 2, 3, 4, 5, 6, 7, 8];

/** Top uses Sub, Bolt and two that are missing; Sub uses Bolt and, in a loop, Top; Sheet shows Top, and a catalogue from
 * elsewhere; Lone points to itself. */
function smallArchive() {
    const data = emptyData();
    data.folders = ['a/', 'a/b/'];
    data.in_folder = [4, 2];
    data.name = NAMES;
    data.states = [
        ['not modified', 'file and DAT file agree'],
        ['new', 'no DAT file'],
        ['modified', 'unsaved changes in the session'],
    ];
    data.state = [0, 0, 1, 2, 0, 0];
    data.size = [10, 20, 30, 40, 50, 60];
    data.changed = [100, 600, 500, 400, 300, 0];
    data.item_revision = ['', 'Rev-77', '', '', '', ''];
    data.condition = { of: [3, 4], text: ['cut off', 'empty'] };
    data.condition_finding = [1, 0];
    data.unread = [5];
    data.notes = { of: [4, 4], text: ['one', 'two'] };
    data.hows = [
        ['part file, MML', 'by name', 3, 2],
        ['context part', '', 1, 0],
    ];
    data.links = {
        count: [4, 2, 0, 2, 1, 0],
        to: [SUB, BOLT, GONE, ALSO_GONE, BOLT, TOP, TOP, CATALOG, LONE],
        how: [0, 0, 1, 1, 0, 0, 0, 0, 0],
    };
    data.others = {
        name: ['/elsewhere/Screws.catalog', 'D:\\old\\Bolt.CATPart', 'Nut.CATPart'],
        there: [0],
        count: [0, 2, 0],
        total: [0, 12, 0],
        to: [BOLT2, BOLT],
        agree: [1, 0],
    };
    data.ghosts = { of: [0, 1, 1], name: ['X', 'Y', 'Z'], live: [0, 1, 0] };
    data.duplicates = [['strangers', [2, 5]]];
    data.orphans = [4, 5];
    return new model.Archive(data);
}

const wordsOf = (archive, node) => archive.wordsOf(node).map(({ text }) => text);

test('tells what is wrong with each document, the worst first', () => {
    const archive = smallArchive();
    assert.deepEqual(
        NAMES.map((_, node) => wordsOf(archive, node)),
        [
            ['2 missing'],
            [],
            ['new', 'duplicate'],
            ['cut off', 'modified'],
            ['empty', 'note', 'orphan'],
            ['cannot be read', 'duplicate', 'orphan'],
        ],
    );
});

test('links lead both ways', () => {
    const archive = smallArchive();
    assert.deepEqual([...archive.usersOf(BOLT)], [TOP, SUB]);
    assert.deepEqual([...archive.usersOf(TOP)], [SUB, SHEET]);
    assert.deepEqual([...archive.usersOf(GONE)], [TOP]);
    assert.deepEqual([...archive.targetsOf(GONE)], []);
    assert.deepEqual(
        archive.linesOf(BOLT, 'used by').map(({ link }) => archive.howOf(link).uses),
        [3, 3],
    );
    assert.deepEqual(archive.howOf(2), { kinds: 'context part', rule: '', uses: 1, isChosen: false });
    assert.deepEqual(archive.missing(), [GONE, ALSO_GONE]);
    assert.deepEqual(archive.ghostsOf(SUB), [
        { name: 'Y', isLive: true },
        { name: 'Z', isLive: false },
    ]);
    assert.deepEqual(archive.ghostsOf(TOP), [{ name: 'X', isLive: false }]);
    assert.deepEqual(archive.ghostsOf(SHEET), []);
});

test('names: whole, of the file, of the folder, and back', () => {
    const archive = smallArchive();
    for (const [node, path, file, folder] of [
        [BOLT2, 'a/b/BOLT.CATPart', 'BOLT.CATPart', 'a/b/'],
        [GONE, 'D:\\old\\Bolt.CATPart', 'Bolt.CATPart', 'D:\\old\\'],
        [ALSO_GONE, 'Nut.CATPart', 'Nut.CATPart', ''],
    ]) {
        assert.equal(archive.pathOf(node), path);
        assert.equal(archive.fileNameOf(node), file);
        assert.equal(archive.folderNameOf(node), folder);
        assert.equal(archive.find(path), node);
    }
    assert.equal(archive.find('constructor'), -1);
});

test('finds words in name, folder and revision, counts by tile, and orders', () => {
    const finder = new model.Finder(smallArchive());
    const find = (changes) => finder.find({ view: 'documents', q: '', show: '', sort: 'folder', ...changes });
    for (const [changes, rows] of [
        [{}, [0, 1, 2, 3, 4, 5]],
        [{ q: 'bolt' }, [BOLT, BOLT2]],
        [{ q: '  CATPart A/B/ ' }, [LONE, BOLT2]],
        [{ q: 'rev-7' }, [SUB]],
        [{ q: 'bolt lone' }, []],
        [{ show: 'missing' }, [TOP]],
        [{ show: 'damaged' }, [SHEET, BOLT2]],
        [{ show: 'duplicates', q: 'a/b/' }, [BOLT2]],
        [{ show: 'orphans' }, [LONE, BOLT2]],
        [{ sort: 'problems' }, [SHEET, BOLT2, TOP, BOLT, LONE, SUB]],
        [{ sort: '-problems' }, [SUB, LONE, BOLT, TOP, BOLT2, SHEET]],
        [{ sort: 'name' }, [BOLT, BOLT2, LONE, SHEET, SUB, TOP]],
        [{ sort: 'uses' }, [TOP, SUB, SHEET, LONE, BOLT, BOLT2]],
        [{ sort: 'users' }, [TOP, BOLT, SUB, LONE, SHEET, BOLT2]],
        [{ sort: 'changed' }, [SUB, BOLT, SHEET, LONE, TOP, BOLT2]],
        [{ view: 'repair' }, [GONE, ALSO_GONE]],
        [{ view: 'repair', sort: '-candidates' }, [ALSO_GONE, GONE]],
        [{ view: 'repair', q: 'nut' }, [ALSO_GONE]],
    ])
        assert.deepEqual([...find(changes).rows], rows, JSON.stringify(changes));
    const { counts } = find({ q: 'a/b/', show: 'missing' });
    assert.deepEqual(counts, { all: 2, missing: 0, damaged: 1, new: 0, modified: 0, duplicates: 1, orphans: 2 });
});

test('a tree opens level by level, ends at loops, and shows candidates', () => {
    const tree = new model.Tree(smallArchive(), TOP, 'uses');
    const shown = () => tree.lines.map(({ node, level }) => [node, level]);
    assert.deepEqual(shown(), [
        [SUB, 1],
        [BOLT, 1],
        [GONE, 1],
        [ALSO_GONE, 1],
    ]);
    assert.deepEqual(
        [0, 1, 2, 3].map((at) => tree.canOpen(at)),
        [true, false, true, false],
    );
    tree.toggle(2);
    assert.deepEqual(shown().slice(2), [
        [GONE, 1],
        [BOLT2, 2],
        [BOLT, 2],
        [ALSO_GONE, 1],
    ]);
    assert.deepEqual(
        tree.lines.map(({ link }) => link),
        [0, 1, 2, -1, -1, 3],
    );
    tree.toggle(0);
    assert.deepEqual(shown().slice(0, 4), [
        [SUB, 1],
        [BOLT, 2],
        [TOP, 2],
        [BOLT, 1],
    ]);
    assert.deepEqual([tree.isLoop(1), tree.isLoop(2), tree.canOpen(2)], [false, true, false]);
    assert.deepEqual([tree.lines[2].place, tree.lines[2].of], [2, 2]);
    assert.deepEqual([tree.parentOf(2), tree.parentOf(0), tree.parentOf(5)], [0, -1, 4]);
    tree.toggle(0);
    tree.toggle(2);
    assert.deepEqual(shown(), [
        [SUB, 1],
        [BOLT, 1],
        [GONE, 1],
        [ALSO_GONE, 1],
    ]);
    const users = new model.Tree(smallArchive(), GONE, 'used by');
    users.toggle(0);
    assert.deepEqual(
        users.lines.map(({ node, level }) => [node, level]),
        [
            [TOP, 1],
            [SUB, 2],
            [SHEET, 2],
        ],
    );
});

test('the neighbourhood: each node once a side, in its nearest column', () => {
    const archive = smallArchive();
    assert.deepEqual(model.neighbourhood(archive, TOP, {}), {
        columns: [
            { column: -1, boxes: [SUB, SHEET], more: 0 },
            { column: 0, boxes: [TOP], more: 0 },
            { column: 1, boxes: [GONE, ALSO_GONE, SUB, BOLT], more: 0 },
        ],
        lines: [
            [0, 0, 0],
            [0, 1, 0],
            [1, 0, 2],
            [1, 0, 3],
            [1, 0, 0],
            [1, 0, 1],
        ],
    });
    const narrow = model.neighbourhood(archive, TOP, { 1: 1, [-1]: 1 });
    assert.deepEqual(
        narrow.columns.map(({ boxes, more }) => [boxes, more]),
        [
            [[SUB], 1],
            [[TOP], 0],
            [[GONE], 3],
        ],
    );
    const farther = model.neighbourhood(archive, SHEET, { 2: 3 }).columns;
    assert.deepEqual(farther[2], { column: 2, boxes: [GONE, ALSO_GONE, SUB], more: 1 });
    assert.deepEqual(model.neighbourhood(archive, LONE, {}).columns, [{ column: 0, boxes: [LONE], more: 0 }]);
});

test('no line of a drawing crosses a box, and no box another', () => {
    const archive = new model.Archive(madeArchive(2000));
    for (let node = 0; node < archive.nodes; node += 7) {
        const neighbours = model.neighbourhood(archive, node, { 1: 12 });
        for (const { column, boxes } of neighbours.columns) assert.ok(boxes.length <= (column === 1 ? 12 : 8));
        const drawing = model.layOut(archive, neighbours, 700);
        const columns = [...new Set(drawing.boxes.map(({ x }) => x))].sort((a, b) => a - b);
        for (const { from, to } of drawing.lines) {
            const column = columns.indexOf(from[0] - drawing.boxWidth);
            assert.ok(column >= 0 && to[0] === columns[column + 1] && from[0] < to[0]);
        }
        for (const box of drawing.boxes) {
            assert.ok(box.x >= 0 && box.x + drawing.boxWidth <= drawing.width);
            assert.ok(box.y >= 0 && box.y + 28 <= drawing.height);
            for (const other of drawing.boxes)
                assert.ok(box === other || box.x !== other.x || Math.abs(box.y - other.y) >= 28);
        }
    }
});

test('the shortest way from a top, whatever the loops', () => {
    const archive = smallArchive();
    assert.deepEqual(model.wayFromTop(archive, GONE), [SHEET, TOP, GONE]);
    assert.deepEqual(model.wayFromTop(archive, SHEET), [SHEET]);
    assert.deepEqual(model.wayFromTop(archive, LONE), [LONE], 'nothing but a loop leads there');
});

test('a document with 100,000 links, and one that all point to', () => {
    const data = emptyData();
    const size = 100000;
    data.folders = ['a/'];
    data.in_folder = [size];
    data.states = [['new', '']];
    data.hows = [['part file', 'by name', 1, 0]];
    for (let i = 0; i < size; i++) {
        data.name.push(i + (i === 0 ? '.CATProduct' : '.CATPart'));
        data.state.push(0);
        data.item_revision.push('');
        data.links.count.push(i === 0 ? size : 1);
        data.links.to.push(i);
        data.links.how.push(0);
    }
    for (let i = 1; i < size; i++) data.links.to.push(size - 1);
    for (let i = 1; i < size; i++) data.links.how.push(0);
    const archive = new model.Archive(data);
    const { columns } = model.neighbourhood(archive, size - 1, {});
    assert.deepEqual(
        columns.map(({ boxes, more }) => [boxes.length, more]),
        [
            [8, size - 9],
            [1, 0],
        ],
    );
    const tree = new model.Tree(archive, 0, 'uses');
    assert.equal(tree.lines.length, size);
    tree.toggle(size - 2);
    assert.equal(tree.lines.length, size + 1);
});

test('repair list and tables for spreadsheets', () => {
    const archive = smallArchive();
    assert.deepEqual(model.repairs(archive, [GONE]), [
        {
            wanted: 'D:\\old\\Bolt.CATPart',
            wanted_by: ['a/Top.CATProduct'],
            candidate_count: 12,
            candidates: [
                { document: 'a/b/BOLT.CATPart', agrees: 1 },
                { document: 'a/Bolt.CATPart', agrees: 0 },
            ],
        },
    ]);
    assert.equal(
        model.repairsAsCsv(archive, [GONE, ALSO_GONE]).split('\r\n').slice(1).join('|'),
        'D:\\old\\Bolt.CATPart,1,a/Top.CATProduct,12,"a/b/BOLT.CATPart\na/Bolt.CATPart"|Nut.CATPart,1,a/Top.CATProduct,0,|',
    );
    assert.equal(
        model.documentsAsCsv(archive, [SUB]).split('\r\n')[1],
        'a/Sub.CATProduct,not modified,file and DAT file agree,,2,1,0,20,1970-01-01 00:10,Rev-77',
    );
    assert.deepEqual(model.documentsAsJson(archive, [TOP])[0].uses, [
        'a/Sub.CATProduct',
        'a/Bolt.CATPart',
        'D:\\old\\Bolt.CATPart',
        'Nut.CATPart',
    ]);
    // No cell is a formula, and numbers stay numbers.
    assert.equal(model.csv([['=1+1', '+a', '-b', '@c', 'd,e', 'f"g', -5]]), `'=1+1,'+a,'-b,'@c,"d,e","f""g",-5\r\n`);
});

test('addresses lead back to what they were made of, and hostile ones nowhere', () => {
    const plain = { view: 'documents', q: '', show: '', sort: 'problems', open: '' };
    for (const changes of [
        {},
        { q: 'a b&c=#%', show: 'new', sort: '-name' },
        { view: 'repair', sort: 'users', open: 'D:\\ö\\</script>&q=x.CATPart' },
        { open: 'a/%FF+ %41.CATPart' },
    ])
        assert.deepEqual(model.viewOf(model.addressOf({ ...plain, ...changes })), { ...plain, ...changes });
    assert.equal(model.addressOf(plain), '#');
    assert.deepEqual(model.viewOf('#view=x&show=constructor&sort=__proto__&q=1'), { ...plain, q: '1' });
});

test('texts of a row', () => {
    assert.deepEqual(model.halvesOf('Bracket_000123_A.CATPart', 10), ['Bracket_000123', '_A.CATPart']);
    assert.deepEqual(model.halvesOf('a\u{1F600}b', 10), ['a\u{1F600}', 'b']);
    assert.deepEqual(model.stemOf('Sub.catproduct'), { stem: 'Sub', kind: 'A' });
    assert.deepEqual(model.stemOf('list.xls'), { stem: 'list.xls', kind: '' });
    for (const [bytes, text] of [
        [0, '0 bytes'],
        [999, '999 bytes'],
        [1000, '1.0 KB'],
        [9960, '10 KB'],
        [999600, '1.0 MB'],
        [3e12, '3000 GB'],
    ])
        assert.equal(model.sizeOf(bytes), text);
});
