// The page in a real browser, in front of a camera of its own.
import assert from 'node:assert/strict';
import { readdir, readFile } from 'node:fs/promises';
import net from 'node:net';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { gzipSync } from 'node:zlib';
import { Camera, complaints, installed, openBrowser, root, visit } from './Camera.mjs';

const kHeaviest = 60000;  // bytes of all files, compressed
const kFirstView = 300;   // ms, on a machine at rest
const kPages = 20;

let camera;
let browser;

before(async () => {
  camera = await Camera.boot();
  browser = await openBrowser();
});

after(async () => {
  await browser?.close();
  await camera?.end();
});

const field = (page, path) => page.locator(`[data-path="${path}"]`);
const bar = (page) => page.locator('.waiting .bar');

/** Types into a parameter's box and sends it. */
async function type(page, path, text) {
  const box = field(page, path).locator('input').last();
  await box.fill(text);
  await box.press('Enter');
}

const read = async (path) => (await camera.ctl(path)).trim();

test('all files together are light', async () => {
  const folder = join(root, 'web/page');
  const names = (await readdir(folder, { recursive: true, withFileTypes: true })).filter((entry) => entry.isFile() && !entry.name.endsWith('.LICENSE'));
  const sizes = await Promise.all(names.map(async (entry) => gzipSync(await readFile(join(entry.parentPath ?? entry.path, entry.name)), { level: 9 }).length));
  const sum = sizes.reduce((a, b) => a + b);
  console.log(`page: ${sum} bytes in ${sizes.length} files`);
  assert.ok(sum <= kHeaviest, `${sum} bytes`);
});

test('each class sees what it may', async () => {
  const rows = [
    ['admin', 'administrator', { 'network.interface(1).ip': 1, 'network.ntp.interval': 1 }],
    ['operator', 'operator', { 'network.interface(1).ip': 0, 'network.ntp.interval': 1 }],
    ['user', 'user', { 'network.interface(1).ip': 0, 'network.ntp.interval': 0 }],
  ];
  for (const [user, name, controls] of rows) {
    const page = await visit(browser, camera, user, 'overview');
    await page.getByText(name, { exact: true }).first().waitFor();
    for (const [path, boxes] of Object.entries(controls)) {
      await page.goto(`${camera.page}#/search/${path.replace(/\(.*?\)/, '')}`);
      await field(page, path).locator(boxes ? 'input' : 'output').first().waitFor();
      assert.equal(await field(page, path).locator('input[type=text], input[type=number]').count(), boxes, `${user} ${path}`);
    }
    await page.context().close();
  }
  const nobody = await fetch(camera.page);
  assert.equal(nobody.status, 401);
});

test('the first view stands soon', async () => {
  const page = await visit(browser, camera, 'admin', 'overview');  // once, so that the web server knows the login
  await page.addInitScript(() => {
    const look = () => (document.querySelector('.facts dd')?.textContent ? (window.firstView = performance.now()) : requestAnimationFrame(look));
    look();
  });
  const times = [];
  for (let i = 0; i < 5; ++i) {
    await page.reload();
    times.push(await (await page.waitForFunction(() => window.firstView)).jsonValue());
  }
  const best = Math.min(...times);
  console.log(`first view: ${Math.round(best)} ms at best, aim ${kFirstView}`);
  assert.ok(best < 10 * kFirstView, `${times.map(Math.round)} ms`);
  await page.context().close();
});

test('a value is set, taken as another, discarded, set again and committed', async () => {
  const page = await visit(browser, camera, 'admin', 'search/encode.framerate');
  const path = 'encode(1).framerate';
  const old = await read(path);
  await type(page, path, '12');
  await field(page, path).getByText('12 was taken as 10').waitFor();
  await bar(page).getByText('1 change waits').waitFor();
  await bar(page).click();
  await page.locator('.waiting .group').getByText('12 was taken as 10').waitFor();
  await page.locator('.waiting').getByRole('button', { name: 'Discard' }).click();
  await page.getByRole('dialog').getByRole('button', { name: 'Discard' }).click();
  await bar(page).waitFor({ state: 'detached' });
  assert.equal(await read(path), old);

  await type(page, path, '12');
  await bar(page).waitFor();
  if (await bar(page).getAttribute('aria-expanded') !== 'true') await bar(page).click();
  await page.locator('.waiting').getByRole('button', { name: 'Commit' }).click();
  await page.getByRole('dialog').getByText('It stops the streams').waitFor();
  await page.getByRole('dialog').getByRole('button', { name: 'Commit' }).click();
  await bar(page).waitFor({ state: 'detached' });
  assert.match(await readFile(join(camera.home, 'flash/sysconfig/encode/encode0.conf'), 'utf8'), /FRAME_RATE\s*=\s*"?10/);
  await page.context().close();
});

test("another client's change appears, and leaves alone what is being typed", async () => {
  const page = await visit(browser, camera, 'operator', 'picture/scene');
  const path = 'camera.scene(0).image.color';
  const box = field(page, path).locator('input[type=number]');
  await camera.ctl(`${path}=70`);
  await page.waitForFunction((one) => document.querySelector(`[data-path="${one}"] input[type=number]`).value === '70', path);
  await bar(page).click();
  await page.locator('.waiting .group').getByText('by another client').waitFor();
  await bar(page).click();
  await box.fill('33');
  await camera.ctl(`${path}=60`);
  await field(page, path).getByText('meanwhile changed elsewhere to 60').waitFor();
  assert.equal(await box.inputValue(), '33');
  assert.equal(await read(path), '60');
  await field(page, path).getByRole('button', { name: 'Cancel' }).click();
  assert.equal(await box.inputValue(), '60');
  await page.getByRole('button', { name: 'Save scene 0' }).click();
  await page.getByRole('dialog').getByText('camera.scene.image.color').waitFor();
  await page.getByRole('dialog').getByRole('button', { name: 'Commit' }).click();
  await bar(page).waitFor({ state: 'detached' });
  await page.context().close();
});

test('a commit shows what it takes along of others, and why it was refused', async () => {
  const page = await visit(browser, camera, 'admin', 'search/encode.type');
  await field(page, 'encode(2).type').locator('select').selectOption('h264high');
  await camera.ctl('encode(2).cbr_mode=afs');
  await bar(page).click();
  await page.locator('.waiting .group').getByText('by another client').waitFor();
  await page.locator('.waiting').getByRole('button', { name: 'Commit' }).click();
  await page.getByRole('dialog').getByText('encode(2).cbr_mode').waitFor();
  await page.getByRole('dialog').getByRole('button', { name: 'Commit' }).click();
  await page.getByRole('dialog').getByText('Not possible as the camera is now (412)').waitFor();
  await page.getByRole('dialog').getByRole('button', { name: 'Close' }).click();
  await bar(page).waitFor({ state: 'detached' });  // the camera has taken back what was staged
  await page.context().close();
});

test('areas are drawn with the pointer, the keyboard and numbers', async () => {
  const page = await visit(browser, camera, 'operator', 'picture/areas');
  await page.getByText('Motion', { exact: true }).click();
  const sheet = page.locator('.sheet');
  const box = await sheet.boundingBox();
  const at = (column, row) => [box.x + ((column + 0.5) * box.width) / 15, box.y + ((row + 0.5) * box.height) / 9];
  await page.mouse.move(...at(1, 0));
  await page.mouse.down();
  await page.mouse.move(...at(2, 1));
  await page.mouse.up();
  await sheet.press('ArrowLeft');
  await sheet.press('ArrowUp');
  await sheet.press('Space');  // the pointer went down at column 1 of row 0; left of it is column 0
  for (const [name, number] of [['column', 15], ['row', 9]]) await page.getByLabel(name, { exact: true }).fill(String(number));
  await page.getByRole('button', { name: 'Add' }).click();
  await page.getByRole('button', { name: 'Set the area' }).click();
  await page.getByRole('button', { name: 'Set the area' }).waitFor({ state: 'detached' });
  const bits = new Array(136).fill(0);
  for (const [column, row] of [[0, 0], [1, 0], [2, 0], [1, 1], [2, 1], [14, 8]]) bits[row * 15 + column] = 1;
  const digits = Array.from({ length: 17 }, (_, i) => parseInt(bits.slice(i * 8, i * 8 + 8).reverse().join(''), 2).toString(16).padStart(2, '0')).join('');
  assert.equal((await read('camera.detection(motion).area')).toLowerCase(), digits);
  await page.context().close();
});

test('the search box takes the slash and gives it back', async () => {
  const page = await visit(browser, camera, 'user', 'overview');
  await page.keyboard.press('/');
  await page.keyboard.type('gamma');
  await field(page, 'camera.scene.image.gamma').waitFor();
  await page.keyboard.press('Escape');
  await page.getByRole('heading', { name: 'Overview' }).waitFor();
  await page.context().close();
});

const kParts = ['overview', 'picture/scene', 'picture/areas', 'picture/position', 'picture/more', 'streams', 'network', 'network/names', 'alarms', 'recording', 'users', 'maintenance', 'journal', 'search/rate'];

test('nothing stands against an assistive program', async () => {
  const page = await visit(browser, camera, 'admin', 'overview', { bypassCSP: true });
  const script = await readFile(installed.resolve('axe-core/axe.min.js'), 'utf8');
  for (const part of kParts) {
    await page.goto(`${camera.page}#/${part}`);
    await page.locator('main h1').waitFor();
    await page.evaluate(script);
    const found = await page.evaluate(() => window.axe.run({ resultTypes: ['violations'] }));
    assert.deepEqual(found.violations.map(({ id, nodes }) => `${id}: ${nodes[0].html.slice(0, 160)}`), [], part);
  }
  await page.context().close();
});

/** Applies what was typed in a card of the network's page. */
async function apply(page, card) {
  await page.getByRole('region', { name: card, exact: true }).getByRole('button', { name: 'Apply' }).click();
  await page.getByRole('dialog').getByRole('button', { name: 'Apply' }).click();
  await page.getByRole('heading', { name: 'It goes back in' }).waitFor();
}

test('a change of the address is confirmed', async () => {
  const page = await visit(browser, camera, 'admin', 'network');
  await field(page, 'network.interface(1).ip').locator('input').fill('192.168.0.77');
  await apply(page, 'Address');
  await page.getByText('The camera cannot be reached').waitFor();  // it restarts
  await page.getByText('The camera cannot be reached').waitFor({ state: 'detached' });
  await page.getByRole('button', { name: 'Keep the change' }).click();
  await page.getByRole('heading', { name: 'It goes back in' }).waitFor({ state: 'detached' });
  assert.equal(await read('network.interface(1).ip'), '192.168.0.77');
  await page.context().close();
});

test('HTTPS is switched on, not confirmed, and goes back', async () => {
  const page = await visit(browser, camera, 'admin', 'network');
  const path = 'network.https(configuration).status';
  await field(page, path).locator('.switch').click();
  await apply(page, 'Web server, encrypted');
  assert.equal(await read(path), 'on');
  await page.getByRole('heading', { name: 'It goes back in' }).waitFor({ state: 'detached' });
  assert.equal(await read(path), 'off');
  await page.context().close();
});

test('the page finds the camera again behind a restart', async () => {
  const page = await visit(browser, camera, 'admin', 'overview');
  await camera.script('reboot');
  await page.getByText('The camera cannot be reached').waitFor({ state: 'detached' });
  await camera.ctl('camera.id=behind');
  await page.locator('.head').getByText('behind').waitFor();
  await page.context().close();
});

/** The median time of a read over the daemon's socket, in ms. */
async function readTime() {
  const query = Buffer.from('system.model');
  const frame = Buffer.alloc(6 + query.length);
  frame.writeUInt32LE(query.length + 2);
  query.copy(frame, 6);
  const times = [];
  for (let i = 0; i < 150; ++i) {
    const begin = performance.now();
    await new Promise((done, failed) => net.connect(join(camera.home, 'tmp/request')).on('error', failed).on('data', done).end(frame));
    times.push(performance.now() - begin);
    await new Promise((next) => setTimeout(next, 10));
  }
  return times.sort((a, b) => a - b)[times.length >> 1];
}

test('twenty pages do not hold up a client', async () => {
  const alone = await readTime();
  const pages = await Promise.all(Array.from({ length: kPages }, (_, i) => visit(browser, camera, 'admin', i % 2 ? 'overview' : 'streams')));
  const watched = await readTime();
  console.log(`a read takes ${alone.toFixed(2)} ms alone, ${watched.toFixed(2)} ms with ${kPages} pages open`);
  for (const page of pages) await page.locator('.link.on').waitFor();
  await Promise.all(pages.map((page) => page.context().close()));
  assert.ok(watched < 5 * alone + 50, `${alone} ms, ${watched} ms`);
});

test('no page has complained', () => assert.deepEqual(complaints, []));
