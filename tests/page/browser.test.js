// The page in real browsers, each with the same tests. BROWSERS names their programs ("chromium=/usr/bin/chromium ..."),
// VORNTOOLS the command line; VORNTOOLS_DOCUMENTS, if set, a folder of real documents.
'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { spawnSync } = require('node:child_process');
const { pathToFileURL } = require('node:url');
const { after, describe, test } = require('node:test');
const puppeteer = require('puppeteer-core');
const { emptyData, madeArchive, pageOf } = require('./made_archive.js');

const AXE = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');
const LONG = 120000;
const work = fs.mkdtempSync(path.join(os.tmpdir(), 'page-'));
const browsers = (process.env.BROWSERS || '').split(' ').filter(Boolean);

process.on('exit', () => fs.rmSync(work, { recursive: true, force: true }));

/** @returns {string} the address of a page that the program made */
function report(name, ...given) {
    const file = path.join(work, name + '.html');
    const { status, stderr } = spawnSync(process.env.VORNTOOLS, ['report', '-o', file, ...given]);
    assert.ok(status === 0 || status === 1, String(stderr));
    return pathToFileURL(file).href;
}

function made(name, data) {
    const file = path.join(work, name + '.html');
    fs.writeFileSync(file, pageOf(data));
    return pathToFileURL(file).href;
}

const HOSTILE = [
    '</script><img src=x onerror=document.title="broken">.CATPart',
    '<!--<script>.CATProduct',
    '"quoted" \'twice\' & &lt;b&gt;.CATPart',
    'Dichtung_Öl_\u{1F600}_\u202Eback.CATPart',
    '=HYPERLINK("x").CATPart',
    '%FF%0A line.CATPart',
];

function hostileArchive() {
    const data = emptyData();
    data.looked_at = ['/<b>bold</b>'];
    data.folders = ['</script>/'];
    data.in_folder = [HOSTILE.length];
    data.states = [['<i>new</i>', '</script>']];
    data.versions = [''];
    data.load_types = ['<b>'];
    data.hows = [['<u>part</u>', '', 1, 0]];
    HOSTILE.forEach((name, i) => {
        data.name.push(name);
        for (const column of [data.state, data.version, data.load_type, data.changed]) column.push(0);
        data.size.push(i);
        for (const column of [data.item_revision, data.dataset, data.named_reference]) column.push('<s>');
        data.links.count.push(i === 1 ? HOSTILE.length + 1 : 0);
    });
    data.links.to = HOSTILE.map((_, i) => i).concat(HOSTILE.length);
    data.links.how = data.links.to.map(() => 0);
    data.others = { name: ['C:\\<img src=x>\\Gone.CATPart'], there: [], count: [1], total: [1], to: [0], agree: [1] };
    data.ghosts = { of: [1], name: ['<h1>'], live: [0] };
    return data;
}

const pages = {
    example: report('example', path.join(__dirname, '../../examples/workspace')),
    large: made('large', madeArchive(20000)),
    hostile: made('hostile', hostileArchive()),
};
if (process.env.VORNTOOLS_DOCUMENTS) {
    pages.real = report('real', process.env.VORNTOOLS_DOCUMENTS);
    pages.beside = report('beside', '--previews', 'folder', process.env.VORNTOOLS_DOCUMENTS);
}

for (const entry of browsers) {
    const [name, executablePath] = entry.split('=');
    describe(name, () => {
        // Firefox takes its colours from its settings: a dark one is a browser of its own.
        const launched = new Map();
        async function browserOf(dark) {
            const key = name === 'firefox' && dark;
            if (!launched.has(key))
                launched.set(
                    key,
                    await puppeteer.launch({
                        browser: name === 'firefox' ? 'firefox' : 'chrome',
                        executablePath,
                        headless: true,
                        args: name === 'firefox' ? [] : ['--no-sandbox', '--disable-gpu'],
                        extraPrefsFirefox: { 'layout.css.prefers-color-scheme.content-override': dark ? 0 : 1 },
                    }),
                );
            return launched.get(key);
        }
        after(() => Promise.all([...launched.values()].map((browser) => browser.close())));

        /** Runs steps on a page; nothing may be said on the console, nothing fetched. */
        async function on(address, steps, { width = 1280, height = 860, dark = false } = {}) {
            const page = await (await browserOf(dark)).newPage();
            const said = [];
            page.on('console', (message) => said.push(message.text()));
            page.on('pageerror', (error) => said.push(String(error)));
            page.on('request', (request) => {
                if (/^(https?|ws|ftp):/.test(request.url())) said.push(request.url());
            });
            await page.setViewport({ width, height });
            if (dark && name !== 'firefox')
                await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: 'dark' }]);
            try {
                await page.goto(address);
                await steps(page);
                assert.deepEqual(said, []);
            } finally {
                await page.close();
            }
        }
        const text = (page, selector) => page.$eval(selector, (element) => element.textContent.trim());
        const texts = (page, selector) =>
            page.$$eval(selector, (elements) => elements.map((element) => element.textContent.trim()));
        const names = (page) => texts(page, '#rows .halves');
        const openOf = (page) => page.evaluate(() => new URLSearchParams(location.hash.slice(1)).get('open'));
        const shows = (page, expression, ...values) => page.waitForFunction(expression, { timeout: 10000 }, ...values);
        const nodes = (page) =>
            page.evaluate(() => {
                const walker = document.createTreeWalker(document.body);
                let count = 1;
                while (walker.nextNode()) count++;
                return count;
            });
        async function isAccessible(page, what) {
            const violations = await page.evaluate(async (script) => {
                (0, eval)(script);
                const { violations: found } = await globalThis.axe.run();
                return found.map(
                    ({ id, nodes: where }) =>
                        id +
                        ': ' +
                        where
                            .map(({ html }) => html)
                            .slice(0, 3)
                            .join(' '),
                );
            }, AXE);
            assert.deepEqual(violations, [], what);
        }

        test('the first screen tells what is wrong and what would repair it', { timeout: LONG }, () =>
            on(pages.large, async (page) => {
                assert.match(
                    await text(page, '#verdict'),
                    /^859 documents are missing, wanted by 1,446 others\. For 517 /,
                );
                assert.deepEqual(await texts(page, '#tiles b'), [
                    '20,000',
                    '1,446',
                    '245',
                    '2,846',
                    '2,038',
                    '398',
                    '1,014',
                ]);
                assert.match(
                    await text(page, '#about'),
                    /^\/data\/archive · 2026-01-31 12:00:00 UTC · vorntools 1\.0\.0, 12 s$/,
                );
                assert.equal(await text(page, '#count'), '20,000 documents');
                assert.match((await texts(page, '#rows .findings'))[0], /^cut off/);
                assert.ok((await nodes(page)) < 1000);
            }),
        );

        test('search, tiles and order change the rows', { timeout: LONG }, () =>
            on(pages.large, async (page) => {
                await page.type('#search', 'gear 0001');
                assert.equal(await text(page, '#count'), (await text(page, '#tiles b')) + ' of 20,000 documents');
                for (const row of await texts(page, '#rows .name')) assert.match(row, /gear/i);
                const [all] = await texts(page, '#tiles b');
                await page.click('#tiles [data-show=modified]');
                assert.equal(
                    await page.$eval('#tiles [data-show=modified]', (tile) => tile.getAttribute('aria-pressed')),
                    'true',
                );
                assert.deepEqual((await texts(page, '#tiles b'))[0], all, 'counts follow the search, not the tile');
                for (const words of await texts(page, '#rows .findings')) assert.match(words, /modified/);
                await page.click('#tiles [data-show=modified]');
                await page.click('th.name button');
                const sorted = await names(page);
                assert.deepEqual(
                    sorted,
                    [...sorted].sort((a, b) => (a.toLowerCase() < b.toLowerCase() ? -1 : 1)),
                );
                assert.equal(await page.$eval('th.name', (head) => head.getAttribute('aria-sort')), 'ascending');
                await page.click('th.name button');
                assert.equal(await page.$eval('th.name', (head) => head.getAttribute('aria-sort')), 'descending');
                await page.type('#search', ' nothing like this');
                assert.equal(await page.$eval('#nothing', (element) => element.hidden), false);
                await page.click('#reset');
                assert.equal(await text(page, '#count'), '20,000 documents');
            }),
        );

        test('only what is in sight is in the document, wherever one scrolls to', { timeout: LONG }, () =>
            on(pages.large + '#sort=folder', async (page) => {
                for (const place of [0.5, 1, 0.1]) {
                    await page.$eval(
                        '#scroll',
                        (element, share) => (element.scrollTop = share * element.scrollHeight),
                        place,
                    );
                    await shows(
                        page,
                        (share) => {
                            const rows = [...document.querySelectorAll('#rows tr')].map((row) =>
                                Number(row.id.slice(4)),
                            );
                            return rows.some((row) => Math.abs(row - share * 20000) < 25);
                        },
                        place,
                    );
                    assert.ok((await nodes(page)) < 1000);
                }
            }),
        );

        test('a document opens, a click in the drawing moves on, Back returns', { timeout: LONG }, () =>
            on(pages.example, async (page) => {
                await page.type('#search', 'pump product');
                assert.deepEqual(await names(page), ['GearPump.CATProduct']);
                await page.click('#rows tr');
                assert.equal(await text(page, '#detail-title'), 'GearPump.CATProduct');
                const facts = await texts(page, '.facts dd');
                assert.ok(facts.includes('REV-1000') && facts.includes('V5 R27 SP2'), facts.join('|'));
                assert.match(await text(page, '.advice'), /^1 document that it uses is missing\.$/);
                const first = await openOf(page);
                const drawn = (await texts(page, '.canvas a')).sort().join(' ');
                assert.equal(drawn, 'DriveGear GearPump GearPump Housing Relief_Valve Shaft Shaft');
                await page.evaluate(() =>
                    [...document.querySelectorAll('.canvas a')].find((box) => box.textContent === 'Shaft').click(),
                );
                await shows(page, () => document.getElementById('detail-title').textContent === 'Shaft.CATPart');
                await page.goBack();
                await shows(page, () => document.getElementById('detail-title').textContent === 'GearPump.CATProduct');
                assert.equal(await openOf(page), first);
                assert.equal(await page.$eval('#search', (field) => field.value), 'pump product');
                await page.goForward();
                await shows(page, () => document.getElementById('detail-title').textContent === 'Shaft.CATPart');
                await page.click('.close');
                assert.equal(await page.$eval('#detail', (element) => element.hidden), true);
            }),
        );

        test('an address leads to the same view', { timeout: LONG }, () =>
            on(
                pages.large + '#view=repair&q=gear&open=archive%2F0100%2Fwiring%2FCover_005001_B.CATProduct',
                async (page) => {
                    assert.equal(await text(page, '#detail-title'), 'Cover_005001_B.CATProduct');
                    assert.equal(await text(page, '#list-title'), 'Repair list: missing documents');
                    assert.match(await text(page, '#count'), /^\d+ of 859 missing documents$/);
                    assert.ok((await nodes(page)) < 1000);
                    await page.evaluate(() => (location.hash = '#open=nobody'));
                    await shows(
                        page,
                        () => document.getElementById('detail-title').textContent === 'Not in this report',
                    );
                },
            ),
        );

        test('the repair list: who wants it, what may be meant', { timeout: LONG }, () =>
            on(pages.large, async (page) => {
                await page.click('.to-repair');
                assert.equal(await text(page, '#count'), '859 missing documents');
                const wanted = (await texts(page, '#rows .wanted')).map(Number);
                assert.deepEqual(
                    wanted,
                    [...wanted].sort((a, b) => b - a),
                );
                await page.click('#rows tr');
                assert.match(await text(page, '.advice'), /^A file of that name stands elsewhere:archive\//);
                assert.equal((await page.$$('#used-by .line')).length, Math.min(wanted[0], 12));
                await page.click('.advice a');
                await shows(page, () => document.querySelector('.facts'));
            }),
        );

        test('trees open level by level by mouse and keys', { timeout: LONG }, () =>
            on(pages.example + '#q=pump', async (page) => {
                await page.evaluate(() =>
                    [...document.querySelectorAll('#rows tr')]
                        .find((row) => row.textContent.startsWith('GearPump.CATProduct'))
                        .click(),
                );
                const lines = () =>
                    page.$$eval('#uses .line', (found) =>
                        found.map(
                            (line) => line.getAttribute('aria-level') + ' ' + line.querySelector('.halves').textContent,
                        ),
                    );
                const closed = await lines();
                const at = closed.indexOf('1 Shaft.CATPart');
                await page.evaluate((i) => document.querySelectorAll('#uses .twist')[i].click(), at);
                assert.deepEqual((await lines()).length, closed.length + 2);
                assert.match((await texts(page, '#uses .how')).join('|'), /loop/);
                await page.focus('#uses');
                await page.keyboard.press('Home');
                for (let i = 0; i < at; i++) await page.keyboard.press('ArrowDown');
                await page.keyboard.press('ArrowLeft');
                assert.deepEqual(await lines(), closed);
                await page.keyboard.press('ArrowRight');
                assert.equal((await lines()).length, closed.length + 2);
                assert.equal(
                    await page.$eval(
                        '#' + (await page.$eval('#uses', (tree) => tree.getAttribute('aria-activedescendant'))),
                        (line) => line.getAttribute('aria-expanded'),
                    ),
                    'true',
                );
                await page.keyboard.press('ArrowDown');
                await page.keyboard.press('Enter');
                assert.equal(await text(page, '#detail-title'), 'DriveGear.CATPart');
            }),
        );

        test('the keyboard alone', { timeout: LONG }, () =>
            on(pages.large, async (page) => {
                await page.keyboard.press('/');
                await page.keyboard.type('housing');
                await page.keyboard.press('ArrowDown');
                await page.keyboard.press('End');
                const total = Number((await text(page, '#count')).split(' ')[0].replace(',', ''));
                assert.equal(
                    await page.$eval('#table', (table) => table.getAttribute('aria-activedescendant')),
                    'row-' + (total - 1),
                );
                assert.ok(await page.$('#row-' + (total - 1)));
                await page.keyboard.press('ArrowUp');
                await page.keyboard.press('Enter');
                assert.equal(await page.evaluate(() => document.activeElement.id), 'detail-title');
                await page.keyboard.press('Escape');
                assert.equal(await page.evaluate(() => document.activeElement.id), 'table');
                await page.keyboard.press('?');
                assert.equal(await page.$eval('#keys', (dialog) => dialog.open), true);
                await page.keyboard.press('Escape');
                await page.keyboard.press('/');
                await page.keyboard.type('_00');
                assert.equal(await page.$eval('#scroll', (list) => list.scrollTop), 0, 'a new search begins on top');
                await page.keyboard.press('Escape');
                assert.equal(await page.$eval('#search', (field) => field.value), '');
                assert.equal(await text(page, '#count'), '20,000 documents');
            }),
        );

        test('downloads hold what the list shows', { timeout: LONG }, () =>
            on(pages.large + '#view=repair&q=gone_1.', async (page) => {
                await page.evaluate(() => {
                    globalThis.saved = [];
                    const make = URL.createObjectURL;
                    URL.createObjectURL = (blob) => {
                        globalThis.saved.push(blob.text());
                        return make(blob);
                    };
                    HTMLAnchorElement.prototype.click = function () {
                        globalThis.saved.push(this.download);
                    };
                });
                await page.click('#csv');
                await page.click('#json');
                const [csv, csvName, json, jsonName] = await page.evaluate(() => Promise.all(globalThis.saved));
                assert.deepEqual([csvName, jsonName], ['repair.csv', 'repair.json']);
                const [missing, ...others] = JSON.parse(json);
                assert.equal(others.length, 0);
                assert.match(missing.wanted, /Gone_1\.CATPart$/);
                assert.equal(
                    csv
                        .replace(/^\ufeff/, '')
                        .split('\r\n')[1]
                        .split(',')[1],
                    String(missing.wanted_by.length),
                );
            }),
        );

        test('names are text, whatever they hold', { timeout: LONG }, () =>
            on(pages.hostile, async (page) => {
                assert.deepEqual((await names(page)).sort(), [...HOSTILE].sort());
                await page.type('#search', '<!--');
                await page.click('#rows tr');
                assert.equal(await text(page, '#detail-title'), HOSTILE[1]);
                assert.equal(await page.title(), HOSTILE[1]);
                assert.equal((await page.$$('img, b.bold, h1 + h1, #detail i, #detail u, #detail s')).length, 0);
                const uses = await texts(page, '#uses .halves');
                for (const hostile of HOSTILE) assert.ok(uses.includes(hostile), hostile);
                await page.click('#view-repair');
                assert.deepEqual(await names(page), ['Gone.CATPart']);
            }),
        );

        test('narrow screens show list or document, nothing sticks out', { timeout: LONG }, () =>
            on(
                pages.example,
                async (page) => {
                    const overhang = () => page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
                    assert.ok((await overhang()) <= 0);
                    await page.click('#rows tr');
                    assert.equal(await page.$eval('#list', (list) => getComputedStyle(list).display), 'none');
                    assert.ok((await overhang()) <= 0);
                    await page.click('.close');
                    assert.notEqual(await page.$eval('#list', (list) => getComputedStyle(list).display), 'none');
                },
                { width: 400, height: 800 },
            ),
        );

        test('no violation of accessibility in list, detail, repair list and help', { timeout: LONG }, async () => {
            for (const dark of [false, true])
                await on(
                    pages.example,
                    async (page) => {
                        const paper = await page.$eval('body', (body) => getComputedStyle(body).backgroundColor);
                        assert.equal(paper, dark ? 'rgb(20, 24, 28)' : 'rgb(251, 251, 250)');
                        await isAccessible(page, 'list');
                        await page.click('#rows tr');
                        await isAccessible(page, 'detail');
                        await page.click('#view-repair');
                        await page.click('#rows tr');
                        await isAccessible(page, 'repair');
                        await page.click('#help');
                        await isAccessible(page, 'help');
                    },
                    { dark },
                );
        });

        test('on paper: the rows as a table', { timeout: LONG }, () =>
            on(pages.example, async (page) => {
                await page.evaluate(() => dispatchEvent(new Event('beforeprint')));
                assert.equal((await page.$$('#paper tbody tr, #paper > tr')).length, 8);
                await page.evaluate(() => dispatchEvent(new Event('afterprint')));
                assert.equal(await page.$('#paper'), null);
                assert.ok((await page.pdf()).length > 5000);
            }),
        );

        test(
            'pictures of real documents, in the page and beside it',
            { timeout: LONG, skip: !process.env.VORNTOOLS_DOCUMENTS },
            async () => {
                for (const address of [pages.real, pages.beside])
                    await on(address, async (page) => {
                        await page.waitForFunction(
                            () =>
                                [...document.images].length > 5 &&
                                [...document.images].every((image) => image.complete && image.naturalWidth > 0),
                        );
                        await page.evaluate(() => document.querySelector('#rows img').closest('tr').click());
                        await page.waitForFunction(() => document.querySelector('.title img').naturalWidth > 50);
                    });
            },
        );
    });
}
