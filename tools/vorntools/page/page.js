// Draws what model.js finds. Names reach the page as text nodes and attribute values only, never as markup.

/**
 * @typedef {{kind: 'none'} | {kind: 'embed', block: number} | {kind: 'folder', folder: string, name: string[]}} Pictures
 */

(function () {
    const ROW = 46;
    const LINE = 26;
    const SPARE = 2;
    const MOST_PRINTED = 2000;
    const TILES = [
        ['', 'all', 'documents'],
        ['missing', 'missing', 'missing links'],
        ['damaged', 'damaged', 'damaged'],
        ['modified', 'modified', 'modified'],
        ['new', 'new', 'new'],
        ['duplicates', 'duplicates', 'duplicates'],
        ['orphans', 'orphans', 'orphans'],
    ];
    /** Orders in which the smallest comes first unless they are reversed. */
    const RISING = ['name', 'folder'];

    const byId = (/** @type {string} */ id) => /** @type {HTMLElement} */ (document.getElementById(id));
    const jsonOf = (/** @type {string} */ id) => JSON.parse(byId(id).textContent || 'null');
    const archive = new Archive(jsonOf('data'));
    const finder = new Finder(archive);
    const numbers = new Intl.NumberFormat('en');
    const count = (/** @type {number} */ value) => numbers.format(value);
    const several = (/** @type {number} */ value, /** @type {string} */ one, /** @type {string} */ many) =>
        count(value) + ' ' + (value === 1 ? one : many);

    const missingNodes = archive.missing();
    let view = viewOf(location.hash);
    /** @type {Uint32Array} */
    let rows = new Uint32Array(0);
    let active = 0;
    /** @type {Record<number, number>} boxes a column of the drawing may have, for the document that is open */
    let limits = {};
    /** @type {{rows: Rows, show: () => void}[]} the trees that are open */
    let trees = [];

    /**
     * @param {string} tag @param {Record<string, string | number | boolean | undefined>} [attributes] undefined: none
     * @param {...(Node | string)} children
     */
    function make(tag, attributes = {}, ...children) {
        const element = document.createElement(tag);
        for (const [name, value] of Object.entries(attributes))
            if (value !== undefined) element.setAttribute(name, String(value));
        element.append(...children);
        return element;
    }
    /** @param {string} text @param {() => void} act @param {Record<string, string | number | undefined>} [attributes] */
    function button(text, act, attributes = {}) {
        const element = make('button', { type: 'button', ...attributes }, text);
        element.addEventListener('click', act);
        return element;
    }
    /** @param {string} name @param {number} [most] letters of its end that stay in any case @param {string} [title] */
    function halves(name, most = 16, title = name) {
        const [head, tail] = halvesOf(name, most);
        return make('span', { class: 'halves', title }, make('span', {}, head), make('span', {}, tail));
    }

    // ---- windows onto long lists

    /** Rows of one height of which only those in sight, and a few around them, are in the document. */
    class Rows {
        /**
         * @param {HTMLElement} scroller @param {HTMLElement} before @param {HTMLElement} body @param {HTMLElement} after
         * @param {number} height of a row @param {number} top of the first row
         * @param {(index: number) => HTMLElement} draw
         */
        constructor(scroller, before, body, after, height, top, draw) {
            this.scroller = scroller;
            this.before = before;
            this.body = body;
            this.after = after;
            this.height = height;
            this.top = top;
            this.draw = draw;
            this.total = 0;
            this.first = 0;
            this.last = 0;
            scroller.addEventListener('scroll', () => this.follow(), { passive: true });
        }
        /** @param {number} total */
        show(total) {
            this.total = total;
            // What is as high as its rows has to have its height before it can be measured.
            if (this.last === 0) this.after.style.height = total * this.height + 'px';
            this.follow(true);
        }
        /** @param {boolean} [anyway] */
        follow(anyway) {
            const { scrollTop, clientHeight } = this.scroller;
            const first = Math.max(Math.floor((scrollTop - this.top) / this.height), 0);
            const last = Math.min(Math.ceil((scrollTop + clientHeight - this.top) / this.height), this.total);
            if (!anyway && first >= this.first && last <= this.last) return;
            this.place(Math.min(Math.max(first - SPARE, 0), this.total), Math.min(last + SPARE, this.total));
        }
        /** @param {number} first @param {number} last */
        place(first, last) {
            this.first = first;
            this.last = Math.max(first, last);
            const drawn = [];
            for (let index = this.first; index < this.last; index++) drawn.push(this.draw(index));
            this.body.replaceChildren(...drawn);
            this.before.style.height = this.first * this.height + 'px';
            this.after.style.height = (this.total - this.last) * this.height + 'px';
        }
        /** @param {number} index */
        bringIntoSight(index) {
            const { scrollTop, clientHeight } = this.scroller;
            const begin = index * this.height;
            if (begin < scrollTop) this.scroller.scrollTop = begin;
            else if (begin + this.height + this.top > scrollTop + clientHeight)
                this.scroller.scrollTop = begin + this.height + this.top - clientHeight;
            this.follow(true);
        }
    }

    /** Where a key leads in a list; undefined for any other key.
     * @param {string} key @param {number} at @param {number} total @param {number} page rows that are in sight */
    function stepped(key, at, total, page) {
        /** @type {Record<string, number>} */
        const places = {
            ArrowDown: at + 1,
            ArrowUp: at - 1,
            PageDown: at + page,
            PageUp: at - page,
            Home: 0,
            End: total - 1,
        };
        return key in places ? Math.min(Math.max(places[key], 0), total - 1) : undefined;
    }

    // ---- pictures

    /** @type {Pictures} */
    const pictures = jsonOf('pictures');
    /** @type {Map<number, string[]>} */
    const blocks = new Map();

    /** @param {number} node @returns {string} empty for a document without picture */
    function pictureOf(node) {
        if (!archive.isDocument(node) || pictures.kind === 'none') return '';
        if (pictures.kind === 'folder') {
            const name = pictures.name[node];
            return name ? pictures.folder + '/' + name + '.jpg' : '';
        }
        const number = Math.floor(node / pictures.block);
        let block = blocks.get(number);
        if (!block) {
            block = (document.getElementById('pictures-' + number)?.textContent || '').split('\n').slice(1);
            blocks.set(number, block);
        }
        const line = block[node % pictures.block];
        return line ? 'data:image/jpeg;base64,' + line : '';
    }

    // ---- the list

    /**
     * @typedef {{name: string, titles: [string, string][], isWide: boolean, draw: (node: number) => (Node | string)[]}}
     * Column "titles" are its texts and the orders they stand for, "isWide": not beside an open document
     */

    /** @param {number} node */
    function thumbnail(node) {
        const source = pictureOf(node);
        return source ? [make('img', { src: source, alt: '', decoding: 'async' })] : [];
    }
    /** @param {number} node */
    function nameCell(node) {
        const folder = archive.folderNameOf(node);
        return [halves(archive.fileNameOf(node)), make('span', { class: 'folder', title: folder }, folder)];
    }
    /** @param {number} node */
    function chipsOf(node) {
        if (archive.isDocument(node))
            return archive.wordsOf(node).map(({ kind, text }) => make('span', { class: 'chip ' + kind }, text));
        const [kind, text] = archive.isThere[node] ? ['elsewhere', 'not looked at'] : ['missing', 'missing'];
        return [make('span', { class: 'chip ' + kind }, text)];
    }
    /** @param {number} node */
    function nearest(node) {
        const candidates = archive.candidatesOf(node);
        if (candidates.length === 0) return [make('span', { class: 'quiet' }, 'nowhere in these folders')];
        const others = archive.candidateCountOf(node) - 1;
        const more = others > 0 ? ' and ' + several(others, 'other', 'others') : '';
        const path = archive.pathOf(candidates[0].node);
        return [make('span', { title: path }, archive.folderNameOf(candidates[0].node) + more)];
    }

    /** @type {Record<string, Column[]>} */
    const COLUMNS = {
        documents: [
            { name: 'picture', titles: [['Picture', '']], isWide: false, draw: thumbnail },
            {
                name: 'name',
                titles: [
                    ['Name', 'name'],
                    ['Folder', 'folder'],
                ],
                isWide: false,
                draw: nameCell,
            },
            {
                name: 'findings',
                titles: [['Findings', 'problems']],
                isWide: false,
                draw: (node) => chipsOf(node).slice(0, view.open ? 1 : undefined),
            },
            {
                name: 'count number',
                titles: [['Uses', 'uses']],
                isWide: true,
                draw: (node) => [count(archive.targetsOf(node).length)],
            },
            {
                name: 'count number',
                titles: [['Used by', 'users']],
                isWide: true,
                draw: (node) => [count(archive.usersOf(node).length)],
            },
            {
                name: 'date',
                titles: [['Changed', 'changed']],
                isWide: true,
                draw: (node) => [dateOf(archive.data.changed[node]).slice(0, 10)],
            },
        ],
        repair: [
            {
                name: 'name',
                titles: [
                    ['Missing document', 'name'],
                    ['as stored', 'folder'],
                ],
                isWide: false,
                draw: nameCell,
            },
            {
                name: 'wanted number',
                titles: [['Wanted by', 'users']],
                isWide: false,
                draw: (node) => [count(archive.usersOf(node).length)],
            },
            { name: 'candidate', titles: [['A file of that name', 'candidates']], isWide: true, draw: nearest },
        ],
    };

    const main = /** @type {HTMLElement} */ (document.querySelector('main'));
    const table = byId('table');
    const scroll = byId('scroll');
    const search = /** @type {HTMLInputElement} */ (byId('search'));
    const detail = byId('detail');
    const [spaceBefore, spaceAfter] = Array.from(document.querySelectorAll('tbody.space'), (body) => {
        const row = make('tr');
        body.append(row);
        return row;
    });
    const list = new Rows(scroll, spaceBefore, byId('rows'), spaceAfter, ROW, 32, drawRow);

    function columns() {
        return COLUMNS[view.view].filter(
            ({ name, isWide }) => (!isWide || !view.open) && (name !== 'picture' || pictures.kind !== 'none'),
        );
    }

    /** @param {number} index */
    function drawRow(index) {
        const node = rows[index];
        const row = make('tr', { id: 'row-' + index, 'aria-rowindex': index + 2 });
        if (index === active) row.className = 'active';
        row.setAttribute('aria-selected', String(archive.pathOf(node) === view.open));
        for (const column of columns()) row.append(make('td', { class: column.name }, ...column.draw(node)));
        return row;
    }

    function drawHead() {
        const order = view.sort.replace('-', '');
        const isReversed = view.sort.startsWith('-');
        const cells = columns().map(({ name, titles }) => {
            const cell = make('th', { scope: 'col', class: name });
            for (const [title, by] of titles) {
                if (!by) cell.append(make('span', { class: 'unseen' }, title));
                else cell.append(button(title, () => sortBy(by), by === order ? { class: 'by' } : {}));
                if (by === order)
                    cell.setAttribute('aria-sort', RISING.includes(by) !== isReversed ? 'ascending' : 'descending');
            }
            return cell;
        });
        const head = /** @type {HTMLElement} */ (table.querySelector('thead'));
        const hadFocus = head.contains(document.activeElement) && document.activeElement?.textContent;
        head.replaceChildren(make('tr', { 'aria-rowindex': 1 }, ...cells));
        if (hadFocus) for (const b of head.querySelectorAll('button')) if (b.textContent === hadFocus) b.focus();
    }

    /** @param {string} order */
    function sortBy(order) {
        go({ sort: view.sort === order ? '-' + order : order });
    }

    /** @param {Record<string, number>} counts */
    function drawTiles(counts) {
        const isFirst = byId('tiles').childElementCount === 0;
        TILES.forEach(([show, key, text], i) => {
            if (isFirst) {
                const tile = button('', () => go({ view: 'documents', show: view.show === show ? '' : show }), {
                    class: show,
                    'data-show': show,
                });
                tile.append(make('b'), make('span', {}, text));
                byId('tiles').append(tile);
            }
            const tile = byId('tiles').children[i];
            const isShown = view.view === 'documents' && view.show === show;
            const number = view.view === 'documents' ? counts[key] : totals[key];
            tile.setAttribute('aria-pressed', String(isShown));
            tile.classList.toggle('none', number === 0);
            /** @type {HTMLElement} */ (tile.firstElementChild).textContent = count(number);
        });
    }

    function drawList() {
        const { rows: found, counts } = finder.find(view);
        rows = found;
        const isRepair = view.view === 'repair';
        const total = isRepair ? missingNodes.length : archive.size;
        byId('count').textContent =
            (rows.length === total ? '' : count(rows.length) + ' of ') +
            (isRepair
                ? several(total, 'missing document', 'missing documents')
                : several(total, 'document', 'documents'));
        byId('list-title').textContent = isRepair ? 'Repair list: missing documents' : 'Documents';
        byId('view-documents').setAttribute('aria-pressed', String(!isRepair));
        byId('view-repair').setAttribute('aria-pressed', String(isRepair));
        table.setAttribute('aria-rowcount', String(rows.length + 1));
        table.className = view.view;
        byId('nothing').hidden = rows.length > 0;
        byId('reset').hidden = !view.q && !view.show;
        drawTiles(counts);
        drawHead();
        active = 0;
        scroll.scrollTop = 0;
        list.show(rows.length);
        markActive();
    }

    function markActive() {
        if (rows.length > 0) table.setAttribute('aria-activedescendant', 'row-' + active);
        else table.removeAttribute('aria-activedescendant');
    }
    /** @param {number} index */
    function activate(index) {
        active = index;
        list.bringIntoSight(index);
        markActive();
    }

    byId('rows').addEventListener('click', (event) => {
        const row = /** @type {HTMLElement} */ (event.target).closest('tr');
        if (!row) return;
        active = Number(row.id.slice(4));
        open(rows[active]);
        list.follow(true);
        markActive();
    });
    table.addEventListener('keydown', (event) => {
        if (event.target !== table || rows.length === 0) return;
        const next = stepped(event.key, active, rows.length, Math.floor(scroll.clientHeight / ROW) - 1);
        if (event.key === 'Enter') {
            open(rows[active]);
            byId('detail-title').focus();
        } else if (next === undefined) return;
        else activate(next);
        event.preventDefault();
    });

    // ---- one document

    /** @param {number} node */
    function linkTo(node) {
        return addressOf({ ...view, open: archive.pathOf(node) });
    }
    /** @param {number} node @param {string} [text] */
    function link(node, text = archive.pathOf(node)) {
        return make('a', { href: linkTo(node) }, text);
    }

    /** @param {HTMLElement} facts @param {string} name @param {...(Node | string)} value */
    function fact(facts, name, ...value) {
        if (value.some((part) => part !== '')) facts.append(make('dt', {}, name), make('dd', {}, ...value));
    }

    /** @param {(string | number)[]} values texts and nodes, of which the first ten are shown */
    function linesOf(values) {
        const lines = values
            .slice(0, 10)
            .map((value) => make('div', {}, typeof value === 'string' ? value : link(value)));
        return values.length > 10 ? [...lines, 'and ' + count(values.length - 10) + ' more'] : lines;
    }

    /** @param {number} document */
    function factsOf(document) {
        const { data } = archive;
        const facts = make('dl', { class: 'facts' });
        const [status, reason] = data.states[data.state[document]];
        fact(facts, 'Status', reason ? status + ': ' + reason : status);
        for (const text of archive.conditions.get(document) || []) fact(facts, 'Condition', text);
        fact(facts, 'Notes', ...linesOf(archive.notes.get(document) || []));
        const changed = dateOf(data.changed[document]);
        fact(
            facts,
            'File',
            data.gone.includes(document)
                ? 'not there'
                : sizeOf(data.size[document]) + (changed && ', changed ' + changed),
        );
        fact(facts, 'Saved by', data.versions[data.version[document]] || '');
        fact(facts, 'Item revision', data.item_revision[document]);
        fact(facts, 'Dataset', data.dataset[document]);
        fact(facts, 'Named reference', data.named_reference[document]);
        fact(facts, 'Load type', data.load_types[data.load_type[document]] || '');
        for (const { kind, documents } of archive.duplicates.get(document) || []) {
            fact(facts, 'Same name', kind, ...linesOf(documents.filter((other) => other !== document)));
        }
        const ghosts = archive.ghostsOf(document);
        fact(facts, 'Ghosts', ...linesOf(ghosts.map(({ name, isLive }) => name + (isLive ? ' (used as well)' : ''))));
        fact(facts, 'Streams', make('code', {}, 'vorntools contents ' + quoted(archive.pathOf(document))));
        return facts;
    }
    /** @param {string} name for a shell */
    function quoted(name) {
        return /^[\w./:+-]+$/.test(name) ? name : "'" + name.replace(/'/g, "'\\''") + "'";
    }

    /** @param {number} node what would help, in a sentence */
    function adviceOf(node) {
        if (archive.isDocument(node)) {
            const gone = Array.from(archive.targetsOf(node)).filter((target) => !archive.isThere[target]);
            if (gone.length === 0) return undefined;
            const found = gone.filter((target) => archive.candidatesOf(target).length > 0).length;
            const text =
                several(gone.length, 'document that it uses is missing', 'documents that it uses are missing') +
                (found > 0 ? '; for ' + count(found) + ' a file of that name stands elsewhere.' : '.');
            return make('p', { class: 'advice missing' }, text);
        }
        if (archive.isThere[node])
            return make(
                'p',
                { class: 'advice elsewhere' },
                'The file is there. It is no CATIA document, or stands outside the folders that were looked at.',
            );
        const candidates = archive.candidatesOf(node);
        if (candidates.length === 0)
            return make('p', { class: 'advice missing' }, 'No file of that name stands in these folders.');
        const lines = candidates.map(({ node: candidate, agree }) => {
            const folders = several(agree, 'folder', 'folders') + ' of the stored path';
            return make(
                'li',
                {},
                link(candidate),
                make('span', { class: 'quiet' }, agree > 0 ? ' agrees in ' + folders : ''),
            );
        });
        const others = archive.candidateCountOf(node) - candidates.length;
        const more = others > 0 ? [make('li', {}, 'and ' + count(others) + ' more')] : [];
        return make(
            'div',
            { class: 'advice modified' },
            candidates.length === 1 ? 'A file of that name stands elsewhere:' : 'Files of that name stand elsewhere:',
            make('ul', { class: 'plain' }, ...lines, ...more),
        );
    }

    /** @param {number} node */
    function drawDetail(node) {
        const name = archive.fileNameOf(node);
        const large = pictureOf(node);
        const heading = make(
            'div',
            {},
            make('h2', { id: 'detail-title', tabindex: -1 }, name),
            make('p', { class: 'path' }, archive.isDocument(node) ? archive.folderNameOf(node) : archive.pathOf(node)),
            ...chipsOf(node),
        );
        const title = make('div', { class: 'title' });
        if (large) title.append(make('img', { src: large, alt: 'Preview of ' + name }));
        title.append(heading);
        const parts = [button('Close', close, { class: 'close' }), title];
        const advice = adviceOf(node);
        if (advice) parts.push(advice);
        if (archive.isDocument(node)) parts.push(factsOf(node));
        const way = wayFromTop(archive, node);
        if (way.length > 2) {
            const steps = way.map((step) => link(step, archive.fileNameOf(step)));
            parts.push(make('h3', {}, 'Shortest way from a top'), make('p', { class: 'way' }, ...steps));
        }
        parts.push(make('h3', {}, 'Neighbourhood'), make('div', { class: 'map', id: 'map', role: 'group' }));
        detail.replaceChildren(...parts);
        trees = [];
        if (archive.isDocument(node)) detail.append(...treeOf(node, 'uses', 'Uses'));
        detail.append(...treeOf(node, 'used by', archive.isThere[node] ? 'Used by' : 'Wanted by'));
        detail.scrollTop = 0;
        drawMap(node);
        for (const { show } of trees) show();
    }

    /** @param {number} node */
    function drawMap(node) {
        const map = byId('map');
        const room = map.clientWidth;
        const { width, height, boxWidth, boxes, lines } = layOut(archive, neighbourhood(archive, node, limits), room);
        map.setAttribute(
            'aria-label',
            'Drawing: what uses ' + archive.fileNameOf(node) + ', on its right what it uses',
        );
        const canvas = make('div', { class: 'canvas', style: 'width:' + width + 'px;height:' + height + 'px' });
        const svg = document.createElementNS('http://www.w3.org/2000/svg', 'svg');
        for (const [key, value] of Object.entries({ width, height, 'aria-hidden': 'true' }))
            svg.setAttribute(key, String(value));
        for (const isMissing of [false, true]) {
            const path = document.createElementNS('http://www.w3.org/2000/svg', 'path');
            if (isMissing) path.setAttribute('class', 'missing');
            path.setAttribute(
                'd',
                lines
                    .filter((line) => line.isMissing === isMissing)
                    .map(curve)
                    .join(''),
            );
            svg.append(path);
        }
        canvas.append(svg, ...captions(boxes, boxWidth));
        for (const box of boxes) {
            const style = `left:${box.x}px;top:${box.y}px;width:${boxWidth}px;height:28px`;
            if (box.node < 0) {
                const more = () => {
                    limits[box.column] = (limits[box.column] || 8) + 16;
                    drawMap(node);
                };
                canvas.append(button(count(box.more) + ' more', more, { style }));
                continue;
            }
            const worst = archive.isDocument(box.node) ? archive.wordsOf(box.node)[0]?.kind : '';
            const kind = archive.isThere[box.node] ? worst : 'missing gone';
            const current = box.node === node ? 'true' : undefined;
            const name = archive.fileNameOf(box.node);
            const { stem, kind: letter } = stemOf(name);
            const attributes = { href: linkTo(box.node), style, class: kind || undefined, 'aria-current': current };
            canvas.append(make('a', { ...attributes, 'data-kind': letter }, halves(stem, 8, name)));
        }
        map.replaceChildren(canvas);
        const middle = boxes.find((box) => box.column === 0);
        if (width > room && middle) map.scrollLeft = middle.x + boxWidth / 2 - room / 2;
    }
    /** @param {{from: number[], to: number[]}} line */
    function curve({ from: [x1, y1], to: [x2, y2] }) {
        const x = (x1 + x2) / 2;
        return `M${x1} ${y1}C${x} ${y1} ${x} ${y2} ${x2} ${y2}`;
    }
    /** @param {{column: number, x: number}[]} boxes @param {number} width */
    function captions(boxes, width) {
        return [
            [-1, 'used by'],
            [1, 'uses'],
        ].flatMap(([column, text]) => {
            const box = boxes.find((candidate) => candidate.column === column);
            if (!box) return [];
            const style = `position:absolute;top:5px;left:${box.x}px;width:${width}px;font-size:11px;text-align:center`;
            return [make('span', { class: 'quiet', style }, String(text))];
        });
    }

    /** @param {number} node @param {'uses' | 'used by'} direction @param {string} title @returns {HTMLElement[]} */
    function treeOf(node, direction, title) {
        const tree = new Tree(archive, node, direction);
        const heading = make('h3', {}, title + ' (' + count(tree.lines.length) + ')');
        if (tree.lines.length === 0) return [heading, make('p', { class: 'quiet' }, 'nothing')];
        const id = direction.replace(' ', '-');
        const [before, body, after] = [0, 1, 2].map(() => make('div', { role: 'presentation' }));
        const box = make(
            'div',
            { class: 'tree', id, role: 'tree', tabindex: 0, 'aria-label': title },
            before,
            body,
            after,
        );
        let at = 0;
        const shown = new Rows(box, before, body, after, LINE, 0, (index) => {
            const line = drawLine(tree, index, id + '-' + index);
            if (index === at) line.classList.add('active');
            return line;
        });
        const show = () => {
            shown.show(tree.lines.length);
            box.setAttribute('aria-activedescendant', id + '-' + at);
        };
        const toggle = () => {
            tree.toggle(at);
            show();
        };
        box.addEventListener('click', (event) => {
            const target = /** @type {HTMLElement} */ (event.target);
            const line = target.closest('.line');
            if (!line) return;
            at = Number(line.id.slice(id.length + 1));
            if (target.closest('.twist') && tree.canOpen(at)) toggle();
            else open(tree.lines[at].node);
        });
        box.addEventListener('keydown', (event) => {
            const { isOpen } = tree.lines[at];
            const next = stepped(event.key, at, tree.lines.length, Math.floor(box.clientHeight / LINE));
            if (next !== undefined) at = next;
            else if (event.key === 'Enter') open(tree.lines[at].node);
            else if (event.key === 'ArrowRight' && !isOpen) tree.toggle(at);
            else if (event.key === 'ArrowLeft' && isOpen) tree.toggle(at);
            else if (event.key === 'ArrowLeft') at = Math.max(tree.parentOf(at), 0);
            else return;
            event.preventDefault();
            if (event.key === 'Enter') return byId('detail-title').focus();
            show();
            shown.bringIntoSight(at);
        });
        trees.push({ rows: shown, show });
        box.setAttribute('aria-activedescendant', id + '-0');
        return [heading, box];
    }

    /** @param {Tree} tree @param {number} index @param {string} id */
    function drawLine(tree, index, id) {
        const { node, link: through, level, place, of, isOpen } = tree.lines[index];
        const canOpen = tree.canOpen(index);
        const line = make('div', {
            class: 'line' + (archive.isThere[node] ? '' : ' missing'),
            id,
            role: 'treeitem',
            'aria-level': level,
            'aria-posinset': place,
            'aria-setsize': of,
            'aria-expanded': canOpen ? isOpen : undefined,
            style: 'padding-left:' + (4 + Math.min(level - 1, 12) * 18) + 'px',
        });
        line.append(
            make('span', { class: 'twist', 'aria-hidden': 'true' }, canOpen ? (isOpen ? '▾' : '▸') : '·'),
            halves(archive.fileNameOf(node)),
            make('span', { class: 'how' }, howOf(tree, index, through)),
        );
        return line;
    }
    /** @param {Tree} tree @param {number} index @param {number} through */
    function howOf(tree, index, through) {
        const { node } = tree.lines[index];
        if (through === CANDIDATE) return 'candidate, ' + archive.folderNameOf(node);
        const { kinds, rule, uses, isChosen } = archive.howOf(through);
        const candidates = archive.isThere[node] ? 0 : archive.candidateCountOf(node);
        return [
            archive.isThere[node] ? '' : 'missing',
            candidates > 0 ? several(candidates, 'candidate', 'candidates') : '',
            tree.isLoop(index) ? 'loop' : '',
            uses > 1 ? count(uses) + ' ×' : '',
            kinds,
            rule,
            isChosen ? 'one of several of that name' : '',
        ]
            .filter(Boolean)
            .join(', ');
    }

    /** @param {number} node */
    function open(node) {
        go({ open: archive.pathOf(node) });
    }
    function close() {
        go({ open: '' });
        table.focus();
    }

    function drawOpen() {
        const node = view.open ? archive.find(view.open) : -1;
        detail.hidden = !view.open;
        main.classList.toggle('beside', Boolean(view.open));
        limits = {};
        document.title = view.open ? view.open.slice(view.open.lastIndexOf('/') + 1) : 'Archive report';
        if (node >= 0) return drawDetail(node);
        const gone = make('h2', { id: 'detail-title', tabindex: -1 }, 'Not in this report');
        if (view.open)
            detail.replaceChildren(
                button('Close', close, { class: 'close' }),
                gone,
                make('p', { class: 'path' }, view.open),
            );
        else detail.replaceChildren();
    }

    // ---- addresses

    /** @param {Partial<View>} changes */
    function go(changes) {
        const next = { ...view, ...changes };
        if (addressOf(next) === addressOf(view)) return;
        flush();
        location.hash = addressOf(next);
        become(next);
    }
    /** @param {View} next */
    function become(next) {
        const last = view;
        view = next;
        if (search.value.trim() !== view.q) search.value = view.q;
        if (Boolean(last.open) !== Boolean(view.open)) drawHead();
        // Beside the list, before its rows are counted: an open document narrows it.
        if (last.open !== view.open) drawOpen();
        const isSame =
            last.view === view.view && last.q === view.q && last.show === view.show && last.sort === view.sort;
        if (!isSame) drawList();
        else list.follow(true);
    }
    addEventListener('hashchange', () => {
        const next = viewOf(location.hash);
        if (addressOf(next) === addressOf(view)) return;
        const wasInside = detail.contains(document.activeElement);
        become(next);
        if (wasInside && view.open) byId('detail-title').focus();
    });

    // Browsers refuse many changes of the address in a short time: it follows when the typing pauses.
    /** @type {ReturnType<typeof setTimeout> | undefined} */
    let pending;
    function flush() {
        if (pending === undefined) return;
        clearTimeout(pending);
        pending = undefined;
        history.replaceState(null, '', addressOf(view));
    }
    search.addEventListener('input', () => {
        become({ ...view, q: search.value.trim() });
        clearTimeout(pending);
        pending = setTimeout(flush, 250);
    });

    // ---- keys and buttons

    const keys = /** @type {HTMLDialogElement} */ (byId('keys'));
    search.addEventListener('keydown', (event) => {
        if (event.key !== 'ArrowDown' && event.key !== 'Enter') return;
        event.preventDefault();
        table.focus();
        if (event.key === 'Enter' && rows.length > 0) open(rows[active]);
    });
    addEventListener('keydown', (event) => {
        if (event.ctrlKey || event.metaKey || event.altKey || keys.open) return;
        if (event.key === 'Escape') {
            if (document.activeElement === search && search.value) {
                search.value = '';
                search.dispatchEvent(new Event('input'));
            } else if (view.open) close();
            else return;
        } else if (document.activeElement === search) return;
        else if (event.key === '/') search.focus();
        else if (event.key === '?') keys.showModal();
        else return;
        event.preventDefault();
    });
    byId('view-documents').addEventListener('click', () =>
        go({ view: 'documents', sort: 'problems', show: '', q: '' }),
    );
    byId('view-repair').addEventListener('click', showRepairs);
    byId('help').addEventListener('click', () => keys.showModal());
    byId('reset').addEventListener('click', () => go({ q: '', show: '' }));
    function showRepairs() {
        go({ view: 'repair', sort: 'users', show: '', q: '' });
    }

    /** @param {string} name @param {string} type @param {string} text */
    function download(name, type, text) {
        const anchor = make('a', { download: name, href: URL.createObjectURL(new Blob([text], { type })) });
        anchor.click();
        setTimeout(() => URL.revokeObjectURL(anchor.getAttribute('href') || ''), 60000);
    }
    byId('csv').addEventListener('click', () => {
        // The mark in front tells spreadsheets that the text is UTF-8.
        const text = view.view === 'repair' ? repairsAsCsv(archive, rows) : documentsAsCsv(archive, rows);
        download(view.view + '.csv', 'text/csv', '\ufeff' + text);
    });
    byId('json').addEventListener('click', () => {
        const value = view.view === 'repair' ? repairs(archive, rows) : documentsAsJson(archive, rows);
        download(view.view + '.json', 'application/json', JSON.stringify(value, null, 1));
    });

    // ---- paper

    addEventListener('beforeprint', () => {
        for (const { rows: lines } of trees) lines.place(0, Math.min(lines.total, MOST_PRINTED));
        if (view.open) return;
        const shown = columns().filter(({ name }) => name !== 'picture');
        const paper = make('table', { id: 'paper' });
        const left = rows.length - MOST_PRINTED;
        const text = byId('count').textContent + (left > 0 ? ', the first ' + count(MOST_PRINTED) + ' of them' : '');
        const head = make('tr', {}, ...shown.map(({ titles }) => make('th', { scope: 'col' }, titles[0][0])));
        paper.append(make('caption', {}, text), make('thead', {}, head));
        for (const node of rows.subarray(0, MOST_PRINTED)) {
            const cells = shown.map(({ name, draw }) =>
                make('td', {}, ...(name === 'name' ? [archive.pathOf(node)] : draw(node))),
            );
            paper.append(make('tr', {}, ...cells));
        }
        document.body.append(paper);
    });
    addEventListener('afterprint', () => {
        document.getElementById('paper')?.remove();
        for (const { show } of trees) show();
    });

    let width = innerWidth;
    addEventListener('resize', () => {
        list.follow(true);
        if (innerWidth === width) return;
        width = innerWidth;
        const node = view.open ? archive.find(view.open) : -1;
        if (node >= 0) drawMap(node);
    });

    // ---- the first screen

    const totals = finder.find({ view: 'documents', q: '', show: '', sort: 'problems' }).counts;

    function drawHeader() {
        const { data } = archive;
        const seconds =
            data.seconds < 0.1
                ? '< 0.1'
                : data.seconds < 10
                  ? data.seconds.toFixed(1)
                  : count(Math.round(data.seconds));
        byId('about').textContent = [
            data.looked_at.join(', '),
            data.date.replace('T', ' ').replace('Z', ' UTC'),
            data.program + ', ' + seconds + ' s',
        ].join(' · ');
        const verdict = byId('verdict');
        const { length } = missingNodes;
        const found = missingNodes.filter((node) => archive.candidatesOf(node).length > 0).length;
        if (length === 0 && totals.damaged === 0)
            verdict.append(make('b', { class: 'good' }, 'Nothing is missing'), ' and nothing is damaged. ');
        if (length > 0) {
            verdict.append(make('b', {}, several(length, 'document is missing', 'documents are missing')));
            verdict.append(', wanted by ' + several(totals.missing, 'other', 'others') + '. ');
            if (found > 0) verdict.append('For ' + count(found) + ' a file of that name stands elsewhere. ');
        }
        if (totals.damaged > 0)
            verdict.append(
                make('b', {}, several(totals.damaged, 'document is damaged', 'documents are damaged')),
                '. ',
            );
        if (length > 0) verdict.append(button('Repair list', showRepairs, { class: 'to-repair' }));
        if (data.complaints.length > 0)
            byId('about').after(make('p', { class: 'complaints' }, 'Not looked at: ' + data.complaints.join(', ')));
    }

    drawHeader();
    if (view.open) drawOpen();
    search.value = view.q;
    drawList();
    performance.mark('ready');
    // The first letter of a search and the first document that is opened shall not wait for them.
    setTimeout(() => archive.searchTexts(), 50);
    setTimeout(() => archive.find(''), 100);
})();
