/// Rulers along the label, in mm, inches or dots.
import {$} from './dom.js';

/// Ticks stand apart by so many pixels of the screen at least, and words by so many.
const TICK = 5;
const WORD = 48;
const STEPS = {mm: [0.1, 0.5, 1, 5, 10, 50, 100, 500, 1000], in: [0.0625, 0.125, 0.25, 0.5, 1, 5, 10, 50],
    dots: [1, 5, 10, 50, 100, 500, 1000, 5000, 10000]};

/// Pixels of the page for a unit; dots are those that the stream counts, of which each may be several pixels.
export const pixelsPer = {mm: ({dpi}) => dpi / 25.4, in: ({dpi}) => dpi, dots: ({pixelsPerDot}) => pixelsPerDot || 1};

export function drawRulers(label) {
    const stage = $('stage').getBoundingClientRect();
    const sheet = $('sheet').getBoundingClientRect();
    if (!label.width || !stage.width) return;
    const isAcross = label.rotation % 180 !== 0;
    const scale = label.scale() * pixelsPer[label.unit](label);
    draw($('ruler-x'), sheet.left - stage.left, scale, isAcross ? label.height : label.width, label, false);
    draw($('ruler-y'), sheet.top - stage.top, scale, isAcross ? label.width : label.height, label, true);
}

function draw(canvas, start, scale, pixels, label, isDown) {
    const ratio = devicePixelRatio;
    const {clientWidth, clientHeight} = canvas;
    canvas.width = Math.round(clientWidth * ratio);
    canvas.height = Math.round(clientHeight * ratio);
    const context = canvas.getContext('2d');
    const style = getComputedStyle(canvas);
    context.scale(ratio, ratio);
    if (isDown) context.transform(0, 1, 1, 0, 0, 0);  // drawn as if it lay
    const long = isDown ? clientHeight : clientWidth;
    const thick = isDown ? clientWidth : clientHeight;
    context.fillStyle = style.getPropertyValue('--paper-edge');
    context.fillRect(start, thick - 3, pixels * label.scale(), 3);
    context.fillStyle = style.color;
    context.font = `10px ${style.fontFamily}`;
    const steps = STEPS[label.unit];
    const tick = steps.find((step) => step * scale >= TICK) || steps[steps.length - 1];
    const word = steps.find((step) => step * scale >= WORD && isWhole(step / tick)) || steps[steps.length - 1];
    const last = Math.floor((long - start) / scale / tick);
    for (let i = Math.floor(-start / scale / tick); i <= last; ++i) {
        const at = Math.round(start + i * tick * scale) + 0.5;
        const isWord = isWhole(i * tick / word);
        context.fillRect(at - 0.5, isWord ? 3 : thick - 7, 1, isWord ? thick - 3 : 7);
        if (isWord) write(context, String(Math.round(i * tick * 1e4) / 1e4), at, isDown);
    }
}

const isWhole = (value) => Math.abs(value - Math.round(value)) < 1e-6;

function write(context, text, at, isDown) {
    context.save();
    if (isDown) {
        context.transform(0, 1, 1, 0, 0, 0);  // stand up again, then read from below
        context.translate(10, at + 3);
        context.rotate(-Math.PI / 2);
        context.textAlign = 'right';
        context.fillText(text, 0, 0);
    } else {
        context.fillText(text, at + 3, 10);
    }
    context.restore();
}
