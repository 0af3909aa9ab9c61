// Small helpers to find and make elements.

export function byId(id) {
  return document.getElementById(id);
}

// An element with these properties (or attributes, if the name has a dash) and children.
export function make(name, properties = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(properties)) {
    if (key.includes('-')) element.setAttribute(key, value);
    else element[key] = value;
  }
  element.append(...children);
  return element;
}

// 12 345 with narrow no-break spaces.
export function grouped(count) {
  return String(count).replace(/\B(?=(\d{3})+$)/g, '\u202f');
}

export function plural(count, noun) {
  return `${grouped(count)} ${noun}${count === 1 ? '' : 's'}`;
}

export function percent(share) {
  if (share > 0 && share < 0.01) return 'under 1 %';
  if (share < 1 && share > 0.99) return 'over 99 %';
  return `${Math.round(100 * share)} %`;
}
