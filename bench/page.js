// What the report's page costs in Chromium: NODE_PATH=build/page/node_modules node bench/page.js [DOCUMENTS...]
// (by default 20,000 and 50,000 made documents). tests/page/run.sh check installs what it needs.
'use strict';

const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { pathToFileURL } = require('node:url');
const puppeteer = require('puppeteer-core');
const { madeArchive, pageOf } = require('../tests/page/made_archive.js');

const ROUNDS = 15;
const DETAILS = ['version', 'size', 'changed', 'item_revision', 'dataset', 'named_reference', 'load_type', 'ghosts'];

const median = (numbers) => [...numbers].sort((a, b) => a - b)[numbers.length >> 1];
const worst = (numbers) => Math.max(...numbers);

/** Runs in the page: milliseconds from an action until the frame after it has been painted. */
function untilPainted(action) {
    return new Promise((resolve) => {
        const begin = performance.now();
        action();
        requestAnimationFrame(() => {
            const { port1, port2 } = new MessageChannel();
            port1.onmessage = () => resolve(performance.now() - begin);
            port2.postMessage(0);
        });
    });
}

/** @param {import('puppeteer-core').Browser} browser the memory of its largest renderer, in MB */
async function rendererMemory(browser) {
    const session = await browser.target().createCDPSession();
    const { processInfo } = await session.send('SystemInfo.getProcessInfo');
    const sizes = processInfo
        .filter(({ type }) => type === 'renderer')
        .map(({ id }) => Number(/^Pss: +(\d+)/m.exec(fs.readFileSync(`/proc/${id}/smaps_rollup`, 'utf8'))[1]) / 1024);
    return worst(sizes);
}

/** @param {string} address */
async function measured(browser, address) {
    const ready = [];
    let page;
    for (let round = 0; round < 5; round++) {
        if (page) await page.close();
        page = await browser.newPage();
        await page.setViewport({ width: 1400, height: 900 });
        await page.goto(address);
        ready.push(await page.evaluate(() => performance.getEntriesByName('ready')[0].startTime));
    }
    await page.evaluate(`globalThis.untilPainted = ${untilPainted}`);
    await new Promise((resolve) => setTimeout(resolve, 500));
    const keys = await page.evaluate(async (rounds) => {
        const times = [];
        const field = document.getElementById('search');
        for (let round = 0; round < rounds; round++) {
            const word = ['gear', 'wing 00', 'catpart', 'xr7'][round % 4];
            for (let end = 1; end <= word.length; end++)
                times.push(
                    await globalThis.untilPainted(() => {
                        field.value = word.slice(0, end);
                        field.dispatchEvent(new Event('input'));
                    }),
                );
        }
        field.value = '';
        field.dispatchEvent(new Event('input'));
        return times;
    }, ROUNDS);
    const opened = await page.evaluate(async (rounds) => {
        const times = [];
        for (let round = 0; round < rounds; round++) {
            const row = document.querySelectorAll('#rows tr')[round % 12];
            times.push(await globalThis.untilPainted(() => row.click()));
        }
        return times;
    }, ROUNDS);
    const { Nodes } = await page.metrics();
    const nodes = await page.evaluate(() => {
        const walker = document.createTreeWalker(document, NodeFilter.SHOW_ALL);
        let count = 1;
        while (walker.nextNode()) count++;
        return count;
    });
    const result = { ready, keys, opened, nodes, Nodes, memory: await rendererMemory(browser) };
    await page.close();
    return result;
}

async function main() {
    const sizes = process.argv.length > 2 ? process.argv.slice(2).map(Number) : [20000, 50000];
    const work = fs.mkdtempSync(path.join(os.tmpdir(), 'page-bench-'));
    const browser = await puppeteer.launch({
        executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
        headless: true,
        args: ['--no-sandbox', '--disable-gpu'],
    });
    const milliseconds = (numbers) => `${median(numbers).toFixed(0)} (worst ${worst(numbers).toFixed(0)})`;
    for (const size of sizes) {
        const data = madeArchive(size);
        const whole = pageOf(data);
        const details = DETAILS.reduce((sum, name) => sum + Buffer.byteLength(JSON.stringify(data[name])), 0);
        const file = path.join(work, `${size}.html`);
        fs.writeFileSync(file, whole);
        const { ready, keys, opened, nodes, memory } = await measured(browser, pathToFileURL(file).href);
        console.log(`${size} documents, ${data.links.to.length} links`);
        console.log(`  page                 ${((Buffer.byteLength(whole) - details) / 1e6).toFixed(2)} MB`);
        console.log(`  details              ${(details / size).toFixed(0)} bytes a document`);
        console.log(`  ready                ${milliseconds(ready)} ms`);
        console.log(`  letter until painted ${milliseconds(keys)} ms`);
        console.log(`  document opened      ${milliseconds(opened)} ms`);
        console.log(`  nodes                ${nodes}`);
        console.log(`  renderer             ${memory.toFixed(0)} MB`);
    }
    await browser.close();
    fs.rmSync(work, { recursive: true });
}

main();
