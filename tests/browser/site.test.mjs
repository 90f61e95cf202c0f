// The whole site as an operator uses it, in Chromium: as the tool serves it, and behind Apache.
// ZEBEK_SCREENSHOTS names a directory for four pictures of every page.
import assert from 'node:assert/strict';
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

/// What hinders somebody on the page that a browser shows; runs there.
async function hindrances() {
    const grave = (await axe.run()).violations.filter(({ impact }) => ['serious', 'critical'].includes(impact));
    return [...grave.flatMap(({ id, nodes }) => nodes.map(({ html }) => `${id}: ${html}`)),
        ...(document.documentElement.scrollWidth > innerWidth ? ['goes beyond the edge'] : [])];
}

/// Whether it serves phones, dark rooms and screen readers.
async function servesAll(page, name) {
    await page.evaluate(readFileSync(new URL(import.meta.resolve('axe-core')), 'utf8'));
    for (const [width, colorScheme] of [[360, 'light'], [360, 'dark'], [1280, 'dark'], [1280, 'light']]) {
        await page.setViewportSize({ width, height: 740 });
        await page.emulateMedia({ colorScheme });
        const view = `${name}, ${width}, ${colorScheme}`;
        if (process.env.ZEBEK_SCREENSHOTS)
            await page.screenshot({ path: `${process.env.ZEBEK_SCREENSHOTS}/${view}.png`, fullPage: true });
        assert.deepEqual(await page.evaluate(hindrances), [], view);
    }
}

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

        const step = (name, body) => context.test(name, body);
        const look = async (name, at = page) => way === 'bare' && servesAll(at, name);
        const press = (name, of = page) => of.getByRole('button', { name, exact: true }).click();
        const field = (name) => page.locator(`#${name}`);
        const told = async (text) => assert.equal((await page.locator('td.message.done').innerText()).trim(), text);
        const see = async (text, of = page) => of.getByText(text).first().waitFor({ state: 'attached' });

        await step('lets the administrator in, and nobody else', async () => {
            await page.goto(`${site}/Login`);
            await look('login');
            await logIn(page, site, 'guess');
            await see('Sorry, your login information is incorrect');
            await look('login refused');
            await page.getByRole('link', { name: 'Log in again' }).click();
            await logIn(page, site);
            await see('Welcome to your GR Dedicated server web interface.');
        });
        for (const [entry, values] of forms) {
            await step(`updates ${entry}`, async () => {
                await press(entry);
                await look(entry);
                for (const [name, value] of Object.entries(values)) {
                    if (typeof value === 'string') await field(name).fill(value);
                    else await field(name).setChecked(value);
                }
                if (values.UserMOTD) assert.equal(await field('MOTD').inputValue(), values.UserMOTD, 'copied when its area is left');
                await press('Update');
                await told('Configuration Updated');
                await look(`${entry} updated`);
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
            await look('mods', mods);
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
            await look('public');
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
            const answer = (method, path, localAddress, { headers, body } = {}) => new Promise((done, failed) => https.request(
                { port, method, path, localAddress, headers, host: '127.0.0.1', rejectUnauthorized: false },
                (response) => done({ status: response.resume().statusCode, headers: response.headers })).on('error', failed).end(body));
            const password = encodeURIComponent(credentials.PW);
            await step('keeps the administration from others', async () => {
                for (const [method, path, ours, others] of [['GET', '/', 200, 200], ['GET', '/Login', 200, 403], ['GET', '/%4cogin', 200, 403],
                    ['GET', '/ErrorText', 200, 403], ['GET', `/GETFILE${password}/plain.rpf`, 200, 403], ['POST', '/logon', 200, 403],
                    ['HEAD', '/', 403, 403]]) {
                    assert.equal((await answer(method, path, '127.0.0.1')).status, ours, `${method} ${path}`);
                    assert.equal((await answer(method, path, '127.0.0.2')).status, others, `${method} ${path}`);
                }
                for (const log of ['zebek-access.log', 'zebek-error.log'])
                    assert.ok(!game.read(log).includes('.rpf'), 'whose links hold the password');
            });
            await step('answers strangers with headers of its own, and refuses what they send', async () => {
                const { status, headers } = await answer('GET', '/ServerStatus.gif', '127.0.0.2');
                assert.equal(status, 307);
                assert.equal(headers.location, forms[1][1].ServerCrash.replace('ö', '\xF6'));
                assert.equal((await answer('GET', '/', '127.0.0.2')).headers['content-security-policy'], 'sandbox');
                for (const headers of [{ 'Content-Length': 3 }, { 'Transfer-Encoding': 'chunked' }])
                    assert.equal((await answer('GET', '/', '127.0.0.2', { headers, body: 'a=b' })).status, 403);
            });
        }
    });
}
