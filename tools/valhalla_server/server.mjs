// A real Valhalla on this machine, for tests and ./try: node server.mjs PACKAGE EXTRACT TILES. PACKAGE is the unpacked npm package
// @valhallajs/valhallajs, TILES a folder for its tiles, made from the extract with the first request. Descriptor 3 is the socket to
// listen on. Ends when its standard input does, so never later than whoever started it.
import { spawn } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import { createRequire } from 'node:module';
import path from 'node:path';
import { codeOf } from './error_codes.mjs';

const [folder, extract, tiles] = process.argv.slice(2);
const require = createRequire(path.resolve(folder) + '/');

let builder;
process.stdin.resume().on('end', () => {
    if (builder) builder.on('close', () => process.exit()).kill('SIGKILL');
    else process.exit();
});

function build(config) {
    return new Promise((resolve, reject) => {
        const program = path.join(require('./lib/binary-path').getBinaryDir(folder), 'valhalla_build_tiles');
        let said = '';
        builder = spawn(program, ['-i', JSON.stringify(config), extract], { stdio: ['ignore', 'pipe', 'pipe'] });
        for (const stream of [builder.stdout, builder.stderr]) stream.on('data', (data) => (said += data));
        builder.on('error', reject).on('close', (code) => {
            builder = undefined;
            code === 0 ? resolve() : reject(new Error(`valhalla_build_tiles failed: ${said.slice(-1000)}`));
        });
    });
}

async function start() {
    const { Actor, getConfig } = require('./index.js');
    const quiet = ['thor', 'odin', 'loki', 'meili'].flatMap((part) => [`--${part}-logging-type`, '']);
    const additionalArgs = ['--mjolnir-tile-extract', '', '--mjolnir-concurrency', '1', ...quiet];
    const config = await getConfig({ tileDir: tiles, tileExtract: '', additionalArgs });
    if (!fs.existsSync(tiles)) await build(config);
    return new Actor(config);
}

function failure(text) {
    const error = text.replace(/^Route error: /, '');
    return JSON.stringify({ error_code: codeOf(error), error, status_code: 400, status: 'Bad Request' });
}

let actor;
async function answer(query) {
    try {
        actor ??= start();
        return [200, await (await actor).route(query)];
    } catch (fault) {
        return [400, failure(fault.message)];
    }
}

http.createServer(async (request, response) => {
    let query = '';
    for await (const part of request.setEncoding('utf8')) query += part;
    const [status, body] = request.url === '/route' ? await answer(query) : [404, failure('Try any of: /route')];
    response.writeHead(status, { 'Content-Type': 'application/json;charset=utf-8' }).end(body);
}).listen({ fd: 3 });
