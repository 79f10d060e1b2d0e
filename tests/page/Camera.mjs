// A simulated camera of the tests' own with its page, and a browser in front of it.
import { execFile, spawn } from 'node:child_process';
import { mkdtemp, rm } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { createInterface } from 'node:readline';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { promisify } from 'node:util';

export const root = join(dirname(fileURLToPath(import.meta.url)), '../..');
/** The packages that `./camera` installs beside the build. */
export const installed = createRequire(join(root, 'build/page-tests/package.json'));

const run = promisify(execFile);
const kChromium = '/usr/bin/chromium';
const kPatience = 120000;  // ms; a busy machine is no fault
export const kPassword = 'secret-of-test';

export class Camera {
  static async boot() {
    const camera = new Camera();
    camera.home = await mkdtemp('/dev/shm/tmx-page-');
    await camera.script('up', '--guard-arg=--seconds=20');  // the pages say 90; nobody need wait for that here
    for (const account of ['admin', 'operator', 'user']) await camera.ctl(`system.password.${account}=${kPassword}`);
    await camera.openPage();
    return camera;
  }

  /** `./camera COMMAND…` for this camera; what it prints. */
  async script(...words) {
    return (await run(join(root, 'camera'), ['--home', this.home, ...words])).stdout;
  }

  /** Requests of another client than the page. */
  async ctl(...items) {
    return this.script('ctl', '--quiet', ...items);
  }

  async openPage() {
    this.relay = spawn(join(root, 'camera'), ['--home', this.home, 'web', '0'], { detached: true, stdio: ['ignore', 'pipe', 'inherit'] });
    for await (const line of createInterface({ input: this.relay.stdout })) {
      this.page = /(http:\S*\/console\/)/.exec(line)?.[1];
      if (this.page) return;
    }
    throw new Error('./camera web has ended');
  }

  async end() {
    if (this.relay) process.kill(-this.relay.pid, 'SIGINT');
    await this.script('down').catch(() => {});
    await rm(this.home, { recursive: true, force: true });
  }
}

/** Chromium lets root run it without its own sandbox only; it sees nothing but this machine. */
export async function openBrowser() {
  const { chromium } = installed('playwright-core');
  return chromium.launch({ executablePath: kChromium, args: process.getuid() === 0 ? ['--no-sandbox'] : [] });
}

/** What the pages' programs and the browser said against them; a camera that restarts is no fault of theirs. */
export const complaints = [];

/** A part of the page as one account sees it. */
export async function visit(browser, camera, user, part, options = {}) {
  const context = await browser.newContext({ httpCredentials: { username: user, password: kPassword }, viewport: { width: 1280, height: 860 }, ...options });
  const page = await context.newPage();
  page.setDefaultTimeout(kPatience);
  page.on('pageerror', (error) => complaints.push(error.stack));
  page.on('console', (message) => {
    if (message.type() === 'error' && !/Failed to load resource|ERR_/.test(message.text())) complaints.push(message.text());
  });
  await page.goto(`${camera.page}#/${part}`);
  await page.locator('main h1').waitFor();
  return page;
}
