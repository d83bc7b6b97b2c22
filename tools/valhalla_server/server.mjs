// A real Valhalla on this machine, for tests and ./try: node server.mjs PACKAGE EXTRACT FOLDER [TIMETABLES]. PACKAGE is the unpacked
// npm package @valhallajs/valhallajs. What it needs of the extract, and of a folder of GTFS feeds, is made in FOLDER with the first
// request, and kept. Descriptor 3 is the socket to listen on. Ends when its standard input does, so never later than whoever started it.
import { spawn } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import { createRequire } from 'node:module';
import path from 'node:path';
import { codeOf } from './error_codes.mjs';

const [npm, extract, folder, timetables] = process.argv.slice(2).map((name) => path.resolve(name));
const require = createRequire(path.resolve(npm) + '/');
const within = (name) => path.join(folder, name);

let running;
process.stdin.resume().on('end', () => {
    if (running) running.on('close', () => process.exit()).kill('SIGKILL');
    else process.exit();
});

function run(name, ...words) {
    return new Promise((resolve, reject) => {
        const program = path.join(require('./lib/binary-path').getBinaryDir(npm), name);
        let said = '';
        // They leave lists of what they found odd in the map wherever they are.
        running = spawn(program, words, { cwd: folder, stdio: ['ignore', 'pipe', 'pipe'] });
        for (const stream of [running.stdout, running.stderr]) stream.on('data', (data) => (said += data));
        running.on('error', reject).on('close', (code) => {
            running = undefined;
            code === 0 ? resolve() : reject(new Error(`${name} failed: ${said.slice(-1000)}`));
        });
    });
}

async function build(config) {
    fs.mkdirSync(within('transit'), { recursive: true });
    fs.writeFileSync(within('settings.json'), JSON.stringify(config));
    const settings = ['-c', within('settings.json')];
    if (timetables) {
        await run('valhalla_ingest_transit', ...settings);
        await run('valhalla_convert_transit', ...settings);
    }
    await run('valhalla_build_tiles', ...settings, extract);
    fs.writeFileSync(within('complete'), '');
}

async function start() {
    const { Actor, getConfig } = require('./index.js');
    const settings = {
        'mjolnir-tile-extract': '',
        'mjolnir-concurrency': '1',
        'mjolnir-transit-dir': within('transit'),
        'mjolnir-transit-feeds-dir': timetables ?? '',
    };
    for (const part of ['thor', 'odin', 'loki', 'meili']) settings[`${part}-logging-type`] = '';
    const additionalArgs = Object.entries(settings).flatMap(([name, value]) => [`--${name}`, value]);
    const config = await getConfig({ tileDir: within('tiles'), tileExtract: '', additionalArgs });
    if (!fs.existsSync(within('complete'))) await build(config);
    return new Actor(config);
}

function failure(text) {
    const error = text.replace(/^Route error: /, '');
    return JSON.stringify({ error_code: codeOf(error), error, status_code: 400, status: 'Bad Request' });
}

let actor;
async function answer(query) {
    try {
        actor ??= start().catch((fault) => {
            actor = undefined; // the next one tries again
            throw fault;
        });
        return [200, await (await actor).route(query)];
    } catch (fault) {
        return [400, failure(fault.message)];
    }
}

http.createServer(async (request, response) => {
    let query = '';
    try {
        for await (const part of request.setEncoding('utf8')) query += part;
    } catch {
        return response.destroy(); // hung up in the middle
    }
    const [status, body] = request.url === '/route' ? await answer(query) : [404, failure('Try any of: /route')];
    response.writeHead(status, { 'Content-Type': 'application/json;charset=utf-8' }).end(body);
}).listen({ fd: 3 });
