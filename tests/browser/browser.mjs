// Chromium for the tests of pages, without a word of its own to any network.
import puppeteer from 'puppeteer-core';

export function launchBrowser() {
  return puppeteer.launch({
    executablePath: process.env.CHROMIUM,
    args: ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
           '--disable-background-networking', '--disable-component-update', '--disable-sync'],
  });
}
