// The whole site as an operator uses it, in Chromium: as the tool serves it, and behind Apache.
// ZEBEK_SCREENSHOTS names a directory for a picture after every step.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync } from 'node:fs';
import https from 'node:https';
import { test } from 'node:test';
import { credentials, exchange, Game, logIn, openBrowser, startApache, until } from './support.mjs';

const forms = [
    ['System Status', { ScanForProcesses: false, StartWebServer: true }],
    ['Status Options', { ServerGo: 'http://images.example/go?a=1&b=2', ServerCrash: 'http://images.example/ö.gif' }],
    ['Server Control', { AutoStartGRServer: true, AutoRestartGRServer: false, AutoRestartOnProcessStop: false,
        UserCMDLINE: '-players 3 -joining 0', Pollingfreq: '300', Timeout: '7', StartupTimeout: '1' }],
    ['Replays', { archiveReplays: false, SkipBlankReplays: false, ReplayCount: '12' }],
    ['Server Options', { ServerName: 'Jägers Nest', UserMOTD: 'Grüße,\nmehr & + <i>', AllowRemoteAccess: true,
        RAPassword: 'pw+1', RecordGame: false, BehindFireWall: true, Synch: '90', JoinPort: '1', AnnouncePort: '65535' }],
];
const script = "<script>document.title='ran'</script>";
const image = "<img/src=''onerror=document.title='ran'>";
const shoot = (page, name) => process.env.ZEBEK_SCREENSHOTS &&
    page.screenshot({ path: `${process.env.ZEBEK_SCREENSHOTS}/${name}.png`, fullPage: true });

for (const way of ['bare', 'apache']) {
    test(`The site, ${way}`, { timeout: 300_000 }, async (context) => {
        const [toolPort, port] = way === 'bare' ? [80, 80] : [8080, 8443];
        const site = way === 'bare' ? 'http://zebek.test' : `https://zebek.test:${port}`;
        const game = new Game(context, toolPort);
        await until(() => exchange(toolPort, 'GET /\r\n'), 'the tool answers');
        if (way === 'apache') {
            startApache(context, game, port, toolPort);
            await until(() => exchange(port, 'GET / HTTP/1.0\r\n\r\n'), 'Apache answers');
        }
        const browser = await openBrowser(context);
        const complaints = [];
        browser.on('console', (message) => complaints.push(`${message.page().url()} ${message.text()}`));
        browser.on('weberror', (error) => complaints.push(error.error().message));
        browser.setDefaultTimeout(30_000);
        const page = await browser.newPage();

        const step = (name, body) => context.test(name, async () => (await body(), shoot(page, `${way}-${name}`)));
        const press = (name, of = page) => of.getByRole('button', { name, exact: true }).click();
        const field = (name) => page.locator(`#${name}`);
        const told = async (text) => assert.equal((await page.locator('td.message.done').innerText()).trim(), text);
        const see = async (text, of = page) => of.getByText(text).first().waitFor({ state: 'attached' });

        await step('lets the administrator in, and nobody else', async () => {
            await logIn(page, site, 'guess');
            await see('Sorry, your login information is incorrect');
            await page.getByRole('link', { name: 'Log in again' }).click();
            await logIn(page, site);
            await see('Welcome to your GR Dedicated server web interface.');
        });
        for (const [entry, values] of forms) {
            await step(`updates ${entry}`, async () => {
                await press(entry);
                for (const [name, value] of Object.entries(values)) {
                    if (typeof value === 'string') await field(name).fill(value);
                    else await field(name).setChecked(value);
                }
                if (values.UserMOTD) assert.equal(await field('MOTD').inputValue(), values.UserMOTD, 'copied when its area is left');
                await press('Update');
                await told('Configuration Updated');
                await press(entry);
                for (const [name, value] of Object.entries(values))
                    assert.equal(typeof value === 'string' ? await field(name).inputValue() : await field(name).isChecked(), value, name);
            });
        }

        const openMods = async () => {
            await press('Server Options');
            const opened = page.waitForEvent('popup');
            await press('Change Active Mods');
            const mods = await opened;
            await see('Mods List', mods);
            return mods;
        };
        await step('changes the mods in a window of their own', async () => {
            const mods = await openMods();
            for (const [folder, button, active] of [
                ['nightwatch', 'Activate', ['coastline', 'nightwatch']],
                ['nightwatch', 'Move up', ['nightwatch', 'coastline']],
                ['nightwatch', 'Move down', ['coastline', 'nightwatch']],
                ['coastline', 'Deactivate', ['nightwatch']]]) {
                const form = mods.locator('form', { hasText: { nightwatch: 'Night Watch', coastline: 'Küste' }[folder] });
                await Promise.all([mods.waitForEvent('load'), press(button, form)]);
                assert.deepEqual(game.read('modsset.txt').match(/(?<=mods\\)\w+/g), active);
            }
            const reloaded = page.waitForEvent('load');
            await Promise.all([mods.waitForEvent('close'), press('Close Window', mods)]);
            await reloaded;
            assert.ok(await page.getByLabel('Night Watch').isChecked());
            assert.ok(!await page.getByLabel('Küste').isChecked());
        });
        await step('starts and stops the game server', async () => {
            await press('Server Control');
            await press('Start Server');
            await told('Process start/find successful');
            await until(async () => (await page.goto(site), page.getByText('Players (3/16)').isVisible()), 'the server answers');
            await see('Grüße');
            assert.deepEqual(await page.locator('table.Players td').allInnerTexts(), ['Players (3/16)', 'Jäger', 'Falcon', '[ZS]Otter']);
            await logIn(page, site);
            await press('Server Control');
            await press('Stop Server');
            await told('Process stop successful');
        });
        await step('lists, sends and deletes replays', async () => {
            const bytes = Buffer.from(Array.from({ length: 5000 }, (_, index) => index * index));
            const names = ['plain.rpf', 'Match 2 of 3.rpf', 'Küste & Hafen #1 50%.rpf'];
            const many = Array.from({ length: way === 'apache' ? 600 : 5 }, (_, index) => `${'long '.repeat(8)}${index}.rpf`);
            for (const name of [...names, ...many]) game.write(bytes, 'Replays', name);
            await press('Replays');
            await press('Update');
            await press('Replays');
            for (const name of names) {
                const [download] = await Promise.all([page.waitForEvent('download'),
                    page.getByRole('link', { name, exact: true }).click()]);
                assert.equal(download.suggestedFilename(), name);
                assert.deepEqual(readFileSync(await download.path()), Buffer.concat([bytes, Buffer.from('\r\n\r\n')]));
            }
            for (const [ticked, count] of [[names.slice(1), 2], [many, many.length]]) {
                await page.waitForLoadState();
                await page.evaluate((ticked) => ticked.forEach((name) => (document.getElementsByName(`DELFILE${name}`)[0].checked = true)), ticked);
                await press('Delete');
                await told(`${count} Replays Files Deleted`);
                assert.ok(!ticked.some((name) => existsSync(game.path('Replays', name))));
                await press('Replays');
            }
            assert.ok(existsSync(game.path('Replays', names[0])));
        });
        await step('has no page that its own policy complains of', () => {
            assert.deepEqual(complaints.splice(0), []);
        });

        await step('runs no script that a name holds', async () => {
            game.addMod('Evil', script);
            await logIn(page, site);
            await press('Server Control');
            await field('UserCMDLINE').fill(`-server-name ${script}S -player-name ${image}P`);
            await press('Update');
            const mods = await openMods();
            assert.equal(await mods.title(), 'Manage Mods');
            await Promise.all([mods.waitForEvent('load'), press('Activate', mods.locator('form', { has: mods.locator('script') }))]);
            await Promise.all([page.waitForEvent('load'), press('Close Window', mods)]);
            assert.equal(await page.locator('td.mods script').count(), 1);
            assert.equal(await page.title(), 'Zebek Suite');
            await press('Server Control');
            await press('Start Server');
            await until(async () => (await page.goto(site), page.getByText('Players (5/16)').isVisible()), 'the server answers');
            assert.equal(await page.locator('script, img').count(), 3);
            assert.equal(await page.title(), 'Ghost Recon Dedicated Server Info');
            assert.ok(complaints.some((text) => text.includes('Content Security Policy')));
            await logIn(page, site);
            await press('Server Control');
            await press('Stop Server');
            await told('Process stop successful');
        });
        if (way === 'apache') {
            await step('keeps the administration from others', async () => {
                const answer = (method, path, localAddress) => new Promise((done, failed) => https.request(`https://127.0.0.1:${port}${path}`,
                    { method, localAddress, rejectUnauthorized: false }, (response) => done(response.resume().statusCode)).on('error', failed).end());
                for (const [method, path, ours, others] of [['GET', '/', 200, 200], ['GET', '/Login', 200, 403], ['GET', '/%4cogin', 200, 403],
                    ['GET', '/ErrorText', 200, 403], ['GET', `/GETFILE${credentials.PW}/plain.rpf`, 200, 403], ['POST', '/logon', 200, 403],
                    ['HEAD', '/', 403, 403]]) {
                    assert.equal(await answer(method, path, '127.0.0.1'), ours, `${method} ${path}`);
                    assert.equal(await answer(method, path, '127.0.0.2'), others, `${method} ${path}`);
                }
                assert.ok(!game.read('zebek-access.log').includes(credentials.PW));
            });
            await step('answers strangers with headers of its own, and nothing that leads them elsewhere', async () => {
                const ask = (path, options = {}) => new Promise((done, failed) => https.request(`https://127.0.0.1:${port}${path}`,
                    { localAddress: '127.0.0.2', rejectUnauthorized: false, ...options }, (response) => done(response.resume()))
                    .on('error', failed).end(options.body));
                const image = await ask('/ServerStatus.gif');
                assert.equal(image.statusCode, 307);
                assert.equal(image.headers.location, forms[1][1].ServerCrash.replace('ö', '\xF6'));
                const status = await ask('/');
                assert.equal(status.headers['content-security-policy'], 'sandbox');
                assert.equal(status.headers.vary, undefined);
                for (const headers of [{ 'Content-Length': 3 }, { 'Transfer-Encoding': 'chunked' }])
                    assert.equal((await ask('/', { headers, body: 'a=b' })).statusCode, 403);
                await logIn(page, site);
                await press('Server Control');
                await field('UserCMDLINE').fill("-player-name <meta/http-equiv='refresh'/content='0;/Login'>");
                await press('Update');
                await press('Server Control');
                await press('Start Server');
                const led = page.locator('meta[http-equiv=refresh]');
                await until(async () => (await page.goto(site), await led.count()), 'the server answers');
                await page.waitForLoadState('networkidle');
                assert.equal(await page.title(), 'Ghost Recon Dedicated Server Info');
            });
        }
    });
}

test('Long forms arrive whole over a slow line', { timeout: 300_000 }, async (context) => {
    const game = new Game(context, 80);
    await until(() => exchange(80, 'GET /\r\n'), 'the tool answers');
    execFileSync('ip', ['link', 'set', 'lo', 'mtu', '1500']);
    execFileSync('tc', 'qdisc add dev lo root tbf rate 10mbit burst 3kb latency 400ms'.split(' '));
    context.after(() => execFileSync('tc', ['qdisc', 'del', 'dev', 'lo', 'root']));
    const page = await (await openBrowser(context)).newPage();
    const press = (name) => page.getByRole('button', { name, exact: true }).click();
    await logIn(page, 'http://zebek.test');
    for (let round = 0; round < 20; ++round) {
        const line = `${round} `.padEnd(4000, 'ä"&');
        await press('Server Control');
        await page.locator('#UserCMDLINE').fill(line);
        await press('Update');
        await press('Server Control');
        assert.equal(await page.locator('#UserCMDLINE').inputValue(), line, `round ${round}`);
        for (let replay = 0; replay < 300; ++replay) game.write('x', 'Replays', `of the match number ${replay}.rpf`);
        await press('Replays');
        await press('Update');
        await press('Replays');
        await page.waitForLoadState('load');
        await page.evaluate(() => document.querySelectorAll('[name^=DELFILE]').forEach((box) => (box.checked = true)));
        await press('Delete');
        await page.getByText('300 Replays Files Deleted').waitFor();
    }
});

/// What hinders somebody on the page that a browser shows; runs there.
async function hindrances() {
    const grave = (await axe.run()).violations.filter(({ impact }) => ['serious', 'critical'].includes(impact));
    const texts = [...document.querySelectorAll('body :not(script)')].filter((element) => element.matches('input:not([type=hidden]), textarea') ||
        [...element.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.data.trim()));
    const small = texts.filter((element) => innerWidth < 500 && parseFloat(getComputedStyle(element).fontSize) < 12);
    return [...grave.flatMap(({ id, nodes }) => nodes.map(({ html }) => `${id}: ${html}`)), ...small.map(({ outerHTML }) => `small: ${outerHTML}`),
        ...(document.documentElement.scrollWidth > innerWidth ? ['goes beyond the edge'] : [])];
}

/// Each control is reached, is seen to be, and does not stand above and left of the one before it.
async function tabThrough(page, view) {
    const controls = page.locator('a[href], textarea, input:not([type=hidden], :disabled)');
    let before = { left: 0, top: 0 };
    for (let index = 0, count = await controls.count(); index < count; ++index) {
        await (index > 0 ? page.keyboard.press('Tab') : controls.first().focus());
        const [reached, place] = await controls.nth(index).evaluate((control) =>
            [control.matches(':focus') && getComputedStyle(control).outlineStyle !== 'none', control.getBoundingClientRect().toJSON()]);
        assert.ok(reached && (place.left >= before.left || place.top >= before.top), `${view}, control ${index}`);
        before = place;
    }
}

test('Every page serves phones, dark rooms, screen readers and the keyboard alone', { timeout: 200_000 }, async (context) => {
    const game = new Game(context, 80);
    game.addMod('Nameless', 'Tells no name, as far as the game reads it');
    game.write('x', 'Replays', `${'long_'.repeat(20)}.rpf`);
    await until(() => exchange(80, 'GET /\r\n'), 'the tool answers');
    const site = 'http://zebek.test';
    const main = await (await openBrowser(context)).newPage();
    let page = main;
    const press = (name) => Promise.all([page.waitForEvent('load'), page.getByRole('button', { name, exact: true }).press('Enter')]);
    const backgroundOf = (selector) => page.locator(selector).evaluate((element) => getComputedStyle(element).backgroundColor);
    let colour;
    for (const [name, open] of [
        ['no server', () => page.goto(site)],
        ['login', () => page.goto(`${site}/Login`)],
        ['login refused', () => press('Submit')],
        ['Main', () => logIn(page, site)],
        ...Object.entries({ 'System Status': 'System Options', 'Server Control': 'Server Control', 'Server Options': 'Server Options',
            Replays: 'REPLAYS', 'Status Options': 'Status Options' }).map(([entry, title]) => [entry, async () => {
            await press(entry);
            assert.equal(await page.getByRole('heading', { level: 1 }).innerText(), title);
        }]),
        ['updated', async () => (await press('Update'), colour = await backgroundOf('[role=status]:focus'))],
        ['refused', async () => {
            await press('Server Control');
            await page.getByLabel('Startup Timeout').fill('1');
            await page.getByLabel('Restart Timeout').fill('65');
            await press('Update');
            assert.notEqual(await backgroundOf('[role=alert]:focus'), colour);
        }],
        ['mods', async () => {
            await press('Server Options');
            [page] = await Promise.all([main.waitForEvent('popup'), page.getByRole('button', { name: 'Change Active Mods' }).press('Space')]);
            await page.getByText('Mods List').waitFor();
        }],
        ['Server Options, running', async () => {
            page = main;
            for (const name of ['Server Control', 'Start Server', 'Server Options']) await press(name);
        }],
        ['public', () => until(async () => (await page.goto(site), page.getByText('Players (5/16)').isVisible()), 'the server answers')],
    ]) {
        await open();
        await page.evaluate(readFileSync(new URL(import.meta.resolve('axe-core')), 'utf8'));
        for (const [width, colorScheme] of [[1280, 'light'], [1280, 'dark'], [360, 'light'], [360, 'dark']]) {
            const view = `${name}, ${width}, ${colorScheme}`;
            await page.setViewportSize({ width, height: 740 });
            await page.emulateMedia({ colorScheme });
            await shoot(page, view);
            assert.deepEqual(await page.evaluate(hindrances), [], view);
            if (colorScheme === 'light') await tabThrough(page, view);
        }
    }
    assert.equal(await backgroundOf('body'), 'rgb(20, 24, 27)');
});
