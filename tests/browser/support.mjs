// What the tests of the web site need around it: a game directory with the tool running in it,
// Apache httpd before it, and a browser.
import { execFileSync, spawn } from 'node:child_process';
import { copyFileSync, mkdirSync, mkdtempSync, readdirSync, readFileSync, readlinkSync, rmSync, writeFileSync } from 'node:fs';
import net from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { setTimeout as pause } from 'node:timers/promises';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

const root = fileURLToPath(new URL('../..', import.meta.url));
export const credentials = { UserName: 'Jörg', PW: 's#?+ 41' };

/// Calls `look` until its result holds.
export async function until(look, what, seconds = 60) {
    for (const end = Date.now() + seconds * 1000; Date.now() < end; await pause(50)) {
        const result = await look();
        if (result) return result;
    }
    throw new Error(`not within ${seconds} s: ${what}`);
}

/// Sends raw bytes; the result is the answer, empty where the connection failed.
export function exchange(port, bytes) {
    return new Promise((done) => {
        let answer = '';
        const socket = net.connect(port, '127.0.0.1', () => socket.write(bytes));
        socket.setEncoding('latin1').on('data', (data) => (answer += data));
        socket.on('error', () => {}).on('close', () => done(answer));
    });
}

/// Runs a program; the result ends it.
function run(program, args, variables = {}) {
    const env = { ...process.env, ...variables };
    const started = spawn(program, args, { stdio: ['ignore', 'inherit', 'inherit'], env });
    const ended = new Promise((done) => started.on('exit', done));
    return () => (started.kill('SIGTERM'), ended);
}

export class Game {
    directory = mkdtempSync(join(tmpdir(), 'zebek-browser-'));
    path = (...names) => join(this.directory, ...names);
    read = (...names) => readFileSync(this.path(...names), 'latin1');
    write = (content, ...names) => {
        mkdirSync(this.path(...names, '..'), { recursive: true });
        writeFileSync(this.path(...names), content, typeof content === 'string' ? 'latin1' : null);
    };
    addMod = (folder, name) => this.write(`name = "${name}"\r\n`, 'Mods', folder, 'ModsCont.txt');

    constructor(context, port) {
        for (const program of ['ZebekSuite.exe', 'GhostRecon.exe'])
            copyFileSync(join(root, 'build/bin', program), this.path(program));
        this.addMod('Coastline', 'Küste');
        this.addMod('NightWatch', 'Night Watch');
        this.write('"\\mods\\coastline"\r\n', 'modsset.txt');
        const settings = { MPGameName: 'Old name', MOTD: 'Old', RemoteServerAccess: 'FALSE', RecordGame: 'TRUE',
            RemoteServerPasswd: '', BehindFirewall: 'FALSE', GameSynchTimeout: 60, JoinPort: 2346, AnnouncePort: 2347 };
        this.write(this.elements('Options', settings), 'options.xml');
        this.write(this.elements('options', { AutoStartGRServer: 'False', AllowRemoteAccess: 'True',
            RemoteAccessPort: port, AdminUserName: credentials.UserName, AdminPassword: credentials.PW }),
            'ZebekSuiteOptions.xml');
        const end = run(this.path('ZebekSuite.exe'), [], { XDG_CONFIG_HOME: this.path('desktop') });
        context.after(async () => {
            await end();
            this.endServer();
            rmSync(this.directory, { recursive: true });
        });
    }
    /// The game server outlives the tool; after a failure one may be left.
    endServer() {
        const server = this.path('GhostRecon.exe');
        for (const pid of readdirSync('/proc').filter(Number))
            try { if (readlinkSync(`/proc/${pid}/exe`) === server) process.kill(pid); } catch { /* has ended */ }
    }
    elements = (name, values) => '<?xml version="1.0" encoding="windows-1252"?>\n' + `<${name}>` +
        Object.entries(values).map(([key, value]) => `<${key}>${value}</${key}>`).join('\n') + `</${name}>`;
}

/// Apache with the shipped configuration, in files of the test's own.
export function startApache(context, game, port, toolPort) {
    const modules = ['mpm_event', 'alias', 'authz_core', 'authz_host', 'setenvif', 'headers', 'buffer',
        'proxy', 'proxy_http', 'lua', 'socache_shmcb', 'ssl'];
    const defines = { PORT: port, TOOL: `127.0.0.1:${toolPort}`, ADMINS: '127.0.0.1', LOGS: game.directory,
        CERTIFICATE: game.path('certificate'), KEY: game.path('key'), LUA: join(root, 'packaging/apache/zebek.lua') };
    execFileSync('openssl', ['req', '-x509', '-newkey', 'rsa:2048', '-nodes', '-subj', '/CN=zebek.test',
        '-keyout', game.path('key'), '-out', game.path('certificate')], { stdio: 'ignore' });
    game.write([`ServerRoot ${game.directory}`, 'ServerName zebek.test', 'PidFile pid', `Listen ${port} https`,
        'User www-data', 'Group www-data', 'DefaultRuntimeDir .', `ErrorLog ${game.path('error.log')}`,
        ...modules.map((name) => `LoadModule ${name}_module /usr/lib/apache2/modules/mod_${name}.so`),
        ...Object.entries(defines).map(([key, value]) => `Define ZEBEK_${key} ${value}`),
        `Include ${join(root, 'packaging/apache/zebek.conf')}`, ''].join('\n'), 'apache.conf');
    context.after(run('/usr/sbin/apache2', ['-DFOREGROUND', '-f', game.path('apache.conf')]));
}

export async function logIn(page, site, password = credentials.PW) {
    await page.goto(`${site}/Login`);
    await page.getByLabel('UserName:').fill(credentials.UserName);
    await page.getByLabel('Password:').fill(password);
    await Promise.all([page.waitForEvent('load'), page.getByLabel('Password:').press('Enter')]);
}

export async function openBrowser(context) {
    // Posted pages are reloaded: an operator's Chromium may ask whether to, and so may this one.
    const browser = await chromium.launch({ executablePath: '/usr/bin/chromium',
        ignoreDefaultArgs: ['--disable-prompt-on-repost'], args: ['--no-sandbox', '--disable-gpu',
        '--disable-quic', '--no-first-run', '--disable-background-networking', '--disable-component-update',
        '--disable-sync', '--host-resolver-rules=MAP zebek.test 127.0.0.1'] });
    context.after(() => browser.close());
    return browser.newContext({ ignoreHTTPSErrors: true, viewport: { width: 1280, height: 800 } });
}
