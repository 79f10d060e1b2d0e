// Takes the pictures of the documentation anew: screenshots.mjs FOLDER
import { mkdir } from 'node:fs/promises';
import { join } from 'node:path';
import { Camera, openBrowser, visit } from './Camera.mjs';

const folder = process.argv[2];

const kParts = ['overview', 'picture/scene', 'picture/areas', 'picture/position', 'streams', 'network', 'alarms', 'recording', 'users', 'maintenance', 'journal'];
const kPhoneParts = ['overview', 'picture/scene'];
const kDesk = { width: 1280, height: 860 };
const kPhone = { width: 390, height: 800 };
const kSettling = 2500;   // ms until the values of a part are there
const kWatching = 20000;  // ms in which the curves grow

const name = (part) => part.replace(/\/(scene)?/, '-').replace(/-$/, '');

/** A camera at work: streams, areas, presets, and changes that wait. */
async function busy(camera) {
  await camera.script('tell', 'session', 'add', 'jpeg', '2600', 'http', 'ip=192.168.0.40', 'port=80', 'fps=5', 'session=http', 'encode=0');
  await camera.script('tell', 'session', 'add', 'h264high', '4200', 'rtsp', 'ip=192.168.0.31', 'port=5004', 'fps=15', 'session=unicast', 'encode=1');
  const mask = new Array(60 * 34).fill(0).map((_, i) => (i % 60 > 40 && i % 60 < 52 && i > 60 * 9 && i < 60 * 20) || (i % 60 < 9 && i < 60 * 6));
  const digits = Array.from({ length: 255 }, (_, i) => mask.slice(i * 8, i * 8 + 8).reduce((byte, on, bit) => byte | (on << bit), 0).toString(16).padStart(2, '0')).join('');
  await camera.ctl('encode(2).type=h264high', 'encode(2).cbr_mode=vbr', 'encode(2).status=save', `camera.private_mask.area=${digits}`, 'camera.private_mask.status=on', 'camera.status=save');
  await camera.ctl('camera.motion.pan=s1240', 'camera.motion.tilt=s420', 'camera.position(1).status=save', 'camera.position(1).comment=Gate', 'camera.motion.pan=s610', 'camera.position(2).status=save', 'camera.position(2).comment=Yard');
  await camera.ctl('camera.scene(0).image.color=62', 'camera.scene(0).image.enhance=40');
}

/** The bar of what waits, opened, with a value that was taken as another. */
async function takeWaiting(page, file) {
  await page.goto(`${page.url().split('#')[0]}#/search/encode.framerate`);
  const box = page.locator('[data-path="encode(1).framerate"] input[type=number]');
  await box.fill('12');
  await box.press('Enter');
  await page.getByText('12 was taken as 10').first().waitFor();
  await page.locator('.waiting .bar').click();
  await page.waitForTimeout(kSettling);
  await page.screenshot({ path: join(folder, `${file}.png`) });
}

async function take(page, part, file) {
  await page.goto(`${page.url().split('#')[0]}#/${part}`);
  await page.waitForTimeout(kSettling);
  await page.screenshot({ path: join(folder, `${file}.png`) });
}

const camera = await Camera.boot();
const browser = await openBrowser();
try {
  await mkdir(folder, { recursive: true });
  await busy(camera);
  for (const theme of ['light', 'dark']) {
    const page = await visit(browser, camera, 'admin', 'picture/position', { colorScheme: theme, viewport: kDesk });
    await camera.ctl('camera.position(1).status=goto');
    await page.waitForTimeout(kWatching / 2);
    await camera.ctl('camera.position(2).status=goto');
    await page.goto(`${camera.page}#/overview`);
    await page.waitForTimeout(kWatching / 2);
    for (const part of kParts) await take(page, part, `${name(part)}-${theme}`);
    await takeWaiting(page, `waiting-${theme}`);
    await page.context().close();
    const phone = await visit(browser, camera, 'admin', 'overview', { colorScheme: theme, viewport: kPhone });
    for (const part of kPhoneParts) await take(phone, part, `phone-${name(part)}-${theme}`);
    await phone.context().close();
  }
} finally {
  await browser.close();
  await camera.end();
}
