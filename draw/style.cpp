#include "draw/style.h"

namespace velto {

std::string drawingStyle() {
  return R"(:root {
  color-scheme: light dark;
  --paper: #ffffff; --ink: #18212d; --soft: #5a6675; --line: #d5dbe3; --lane: #f3f5f8;
  --other: #b3bdca; --call: #0a58a8; --fill: #7db6ea; --extra: #b93a06; --lost: #6f2da8;
  --good: #1c7a3e; --band: #e3eefa;
}
@media (prefers-color-scheme: dark) {
  :root {
    --paper: #12161c; --ink: #e8edf4; --soft: #9aa7b8; --line: #333d4a; --lane: #1b212a;
    --other: #4e5a6a; --call: #7cc0ff; --fill: #2f6ca8; --extra: #ff9a63; --lost: #cf9cff;
    --good: #66cf8e; --band: #1d3550;
  }
}
@media print {
  :root {
    --paper: #ffffff; --ink: #000000; --soft: #444444; --line: #bbbbbb; --lane: #f3f5f8;
    --other: #b3bdca; --call: #0a58a8; --fill: #7db6ea; --extra: #b93a06; --lost: #6f2da8;
    --good: #1c7a3e; --band: #e3eefa;
  }
}
.velto-read { display: block; width: 100%; height: auto; print-color-adjust: exact;
  font: 12px system-ui, "Segoe UI", Roboto, "Liberation Sans", Arial, sans-serif; }
.velto-read text { fill: var(--ink); font-variant-numeric: tabular-nums; }
.velto-read .name, .velto-read .position, .velto-read .key, .velto-read .acid { fill: var(--soft); }
.velto-read .position, .velto-read .acid { text-anchor: middle; font-size: 11px; }
.velto-read .key { font-size: 11px; }
.velto-read .label { font-size: 11.5px; }
.velto-read .before { text-anchor: end; }
.velto-read .strong { font-weight: 600; }
.velto-read .lane { fill: var(--lane); }
.velto-read .zero, .velto-read .axis { fill: none; stroke: var(--line); }
.velto-read .axis { stroke: var(--soft); }
.velto-read .curve { fill: var(--other); fill-opacity: .65; }
.velto-read .curve.called { fill: var(--fill); fill-opacity: 1; }
.velto-read .startcodon { fill: var(--good); }
.velto-read .stopcodon { fill: none; stroke: var(--ink); stroke-width: 1.2; }
.velto-read .rim { fill: none; stroke: var(--paper); stroke-width: 7; stroke-linejoin: round; }
.velto-read .path { fill: none; stroke: var(--call); stroke-width: 4; stroke-linejoin: round; }
.velto-read .path.crowded { stroke-width: 1; }
.velto-read .pole { fill: none; stroke: var(--call); stroke-width: 1.5; }
.velto-read .end { fill: var(--paper); stroke: var(--call); stroke-width: 2.5; }
.velto-read .guide { fill: none; stroke-dasharray: 3 3; }
.velto-read .extra .guide { stroke: var(--extra); }
.velto-read .lost .guide { stroke: var(--lost); }
.velto-read .extra .glyph { fill: var(--extra); }
.velto-read .lost .glyph { fill: var(--paper); stroke: var(--lost); stroke-width: 2; }
.velto-read .protein { fill: var(--band); }
.velto-read .acids { font: 600 11px ui-monospace, "DejaVu Sans Mono", "Liberation Mono", monospace;
  text-anchor: middle; }
.velto-read .counts { stroke: var(--soft); }
.velto-read .unknown { stroke: var(--lost); stroke-width: 2; }
.velto-read .innerstop { stroke: var(--extra); stroke-width: 2; }
)";
}

std::string pageStyle() {
  return R"(* { box-sizing: border-box; }
body { margin: 0; background: var(--paper); color: var(--ink); overflow-wrap: anywhere;
  font: 16px/1.5 system-ui, "Segoe UI", Roboto, "Liberation Sans", Arial, sans-serif; }
main { max-width: 1040px; margin: 0 auto; padding: 24px 16px 48px; }
h1 { font-size: 26px; line-height: 1.25; margin: 0 0 8px; }
h2 { font-size: 19px; margin: 36px 0 10px; padding-top: 14px; border-top: 1px solid var(--line); }
h3 { font-size: 15px; margin: 24px 0 4px; }
p { margin: 0 0 12px; max-width: 72ch; }
.lead { font-size: 18px; }
.soft, figcaption { color: var(--soft); font-size: 14px; }
figure { margin: 16px 0; }
.narrow { display: none; }
table { border-collapse: collapse; margin: 0 0 12px; font-size: 15px; font-variant-numeric: tabular-nums; }
th, td { text-align: left; vertical-align: top; padding: 4px 20px 4px 0;
  border-bottom: 1px solid var(--line); }
th { font-weight: 500; color: var(--soft); overflow-wrap: normal; }
tr > :last-child { padding-right: 0; }
td.number, th.number { text-align: right; }
td.number { white-space: nowrap; }
.tiles { display: grid; grid-template-columns: repeat(auto-fit, minmax(150px, 1fr)); gap: 12px;
  margin: 20px 0 0; }
.tile { background: var(--lane); border-radius: 8px; padding: 12px 14px; }
.tile b { display: block; font-size: 22px; font-weight: 600; line-height: 1.2; }
.tile span { color: var(--soft); font-size: 14px; line-height: 1.35; display: block; }
.shares { width: 100%; max-width: 760px; }
.shares th { width: 34%; }
.share { width: 36%; vertical-align: middle; }
.share div { height: 12px; min-width: 1px; background: var(--fill); border-radius: 2px;
  print-color-adjust: exact; }
.charts { display: grid; grid-template-columns: repeat(auto-fit, minmax(min(100%, 400px), 1fr));
  gap: 20px 32px; align-items: start; }
.charts figure { margin: 0; }
.card h3 { margin-top: 0; }
article.card { margin: 0 0 28px; }
article.card p { margin-bottom: 4px; }
article.card figure { margin: 8px 0; }
.swatch { display: inline-block; width: 12px; height: 12px; border-radius: 2px;
  border: 1px solid var(--call); print-color-adjust: exact; }
.swatch.lower, .velto-chart .lower { background: var(--fill); fill: var(--fill); }
.swatch.upper, .velto-chart .upper { background: var(--paper); fill: var(--paper); }
.velto-chart { display: block; width: 100%; height: auto; print-color-adjust: exact; font: 12px
  system-ui, "Segoe UI", Roboto, "Liberation Sans", Arial, sans-serif; }
.velto-chart .scale { fill: var(--soft); text-anchor: middle; font-variant-numeric: tabular-nums; }
.velto-chart .scale.before { text-anchor: end; }
.velto-chart .bar { stroke: var(--call); stroke-width: .6; }
.velto-chart .grid { stroke: var(--line); fill: none; }
.velto-chart .axis { stroke: var(--soft); fill: none; }
details { margin: 6px 0 0; font-size: 14px; color: var(--soft); }
summary { cursor: pointer; }
.numbers { font-size: 13px; }
pre { margin: 0; white-space: pre-wrap; overflow-wrap: anywhere;
  font: 14px/1.6 ui-monospace, "DejaVu Sans Mono", "Liberation Mono", monospace; }
@media screen and (max-width: 640px) {
  main { padding-top: 16px; }
  h1 { font-size: 22px; }
  .shares th { width: 46%; }
  .share { width: 20%; }
  .wide { display: none; }
  .narrow { display: block; }
}
@media print {
  main { max-width: none; padding: 0; }
  body { font-size: 11pt; }
  figure, table, .card { break-inside: avoid; }
  h2, h3 { break-after: avoid; }
  p:has(+ table) { break-after: avoid; }
  details { display: none; }
}
)";
}

}  // namespace velto
