// Takes the picture of the page that the README shows: picture.js PAGE.html PICTURE.png
'use strict';

const path = require('node:path');
const { pathToFileURL } = require('node:url');
const puppeteer = require('puppeteer-core');

async function main() {
    const [page, picture] = process.argv.slice(2);
    const browser = await puppeteer.launch({
        executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
        headless: true,
        args: ['--no-sandbox', '--disable-gpu'],
    });
    const tab = await browser.newPage();
    await tab.setViewport({ width: 1280, height: 820 });
    await tab.goto(pathToFileURL(path.resolve(page)).href);
    await tab.click('#rows tr');
    await tab.mouse.move(0, 0);
    await new Promise((resolve) => setTimeout(resolve, 300));
    await tab.screenshot({ path: picture });
    await browser.close();
}

main();
