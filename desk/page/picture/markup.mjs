/** What the picture's panel holds. */
export const markup = `
<div class="picture-open">
    <div class="field">
        <label for="picture-file">Picture file</label>
        <input type="file" id="picture-file" aria-describedby="picture-file-hint">
        <p class="hint" id="picture-file-hint">A PNG or a JPEG. Or drop it anywhere here.</p>
    </div>
    <div>
        <p id="picture-info"></p>
        <p class="hint" id="picture-look"></p>
    </div>
</div>
<div id="picture-view" tabindex="0" role="application" aria-label="Picture, before and after"
     aria-describedby="picture-keys">
    <div class="board"></div>
    <canvas aria-hidden="true"></canvas>
    <canvas class="graded" aria-hidden="true"></canvas>
    <div class="cross" hidden></div>
    <span class="side" aria-hidden="true">Before</span>
    <span class="side graded" aria-hidden="true">After</span>
    <div id="divider" role="slider" tabindex="0" aria-label="Divider between before and after"
         aria-orientation="horizontal" aria-valuemin="0" aria-valuemax="100"></div>
</div>
<div class="picture-bar">
    <div class="zoom" role="group" aria-label="Zoom">
        <button type="button" id="zoom-out" aria-label="Zoom out">−</button>
        <output id="zoom-value" aria-label="Zoom" aria-live="off"></output>
        <button type="button" id="zoom-in" aria-label="Zoom in">+</button>
        <button type="button" id="zoom-fit">Fit</button>
        <button type="button" id="zoom-pixels">100 %</button>
    </div>
    <div class="amount">
        <label for="amount">Amount</label>
        <input type="range" id="amount" min="0" max="100" step="1" value="100">
        <output id="amount-value" for="amount" aria-live="off"></output>
    </div>
    <div class="saving">
        <progress id="save-progress" max="1" aria-label="Saving" hidden></progress>
        <button type="button" class="main" id="save-picture">Save PNG</button>
    </div>
</div>
<output id="values" aria-label="Values" aria-live="off"></output>
<p class="hint" id="picture-keys">On the picture: drag or arrow keys pan, wheel or + and − zoom, 0
    fits, 1 shows 100 %. Shift and arrow keys move a cross that reads the values, with Alt ten
    times as far; Escape takes it away.</p>
`;
