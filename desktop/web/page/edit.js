/// Changes of a stream's text that a hand on the label makes.
import {trimmedEnd} from './language.js';

const ORIGINS = new Set(['^FO', '^FT']);

/// Which way a field goes in dots of the stream when it moves by pixels of the finished page.
export function toDots(page, pixelsX, pixelsY) {
    const signX = page.turned === page.mirrored ? 1 : -1;
    const signY = page.turned ? -1 : 1;
    return {x: Math.round(signX * pixelsX / page.pixelsPerDot) || 0, y: Math.round(signY * pixelsY / page.pixelsPerDot) || 0};
}

/// Where the look of a field is defined in its stream; null if that is in a stored format that came from elsewhere.
export function placeOfLook(field) {
    if (field.definition) return field.definition.commands || null;
    return field.commands || null;
}

/// What to select in the stream for a field: where its data come from, else where its look is defined.
export const placeToSelect = (field) => field.commands || placeOfLook(field);

/// What moves a field: where its numbers stand in the text, and how they are written. Null if the stream does not hold them.
export function mover(text, commands, offsets, field, dpi) {
    const place = placeOfLook(field);
    if (!place) return null;
    const start = offsets.toIndex(place.offset);
    const end = offsets.toIndex(place.offset + place.length);
    const origin = commands.filter((one) => one.at >= start && one.at < end && ORIGINS.has(one.name)).pop();
    const first = commands.find((one) => one.at >= start);
    if (!first) return null;
    const write = writer(text, commands, start, dpi);
    const at = {x: field.origin ? field.origin.x : 0, y: field.origin ? field.origin.y : 0};
    if (!origin) {
        const replacement = (x, y) => `${first.caret}FO${write(x)}${first.delimiter}${write(y)}`;
        return {from: start, to: start, at, replacement};
    }
    const body = text.slice(origin.body, trimmedEnd(text, origin));
    const parts = body.split(origin.delimiter);
    const to = origin.body + parts.slice(0, 2).join(origin.delimiter).length;
    return {from: origin.body, to, at, replacement: (x, y) => write(x) + origin.delimiter + write(y)};
}

/// How a length in dots is written by the unit in force: whole in dots, else as short as still means that dot.
function writer(text, commands, index, dpi) {
    const {unit, enlargement} = unitAt(text, commands, index);
    const perUnit = {I: dpi, M: Math.floor(dpi / 25)}[unit];
    return (dots) => {
        const bounded = Math.min(Math.max(dots, 0), 32000);
        if (!perUnit) return String(Math.round(bounded / enlargement));
        let digits = 0;
        while (digits < 5 && Math.round(Number((bounded / perUnit).toFixed(digits)) * perUnit) !== bounded) ++digits;
        return (bounded / perUnit).toFixed(digits);
    };
}

function unitAt(text, commands, index) {
    let unit = 'D';
    let enlargement = 1;
    for (const one of commands) {
        if (one.at > index) break;
        if (one.name !== '^MU') continue;
        const [letter, base, wanted] = text.slice(one.body, trimmedEnd(text, one)).split(one.delimiter);
        unit = 'DIM'.includes(letter.toUpperCase()) && letter ? letter.toUpperCase() : unit;
        const times = Number(wanted) / Number(base);
        if (Number.isInteger(times) && times > 0) enlargement = times;
    }
    return {unit, enlargement};
}
