import { whenLost } from './engine_client.mjs';
import { startLook } from './look/look.mjs';
import { startMatch } from './match/match.mjs';
import { complain } from './message.mjs';
import { startPicture } from './picture/picture.mjs';
import { startTabs } from './tabs.mjs';

// Looks and pictures live in the engine: without it there is nothing to go on with.
const AGAIN = '#again';
whenLost(() => {
    location.hash = AGAIN;
    location.reload();
});
if (location.hash === AGAIN) {
    complain('The engine had to start again: give it the look and the picture once more.');
    location.hash = '';
}

startTabs();
startLook();
startPicture(document.querySelector('#picture-root'));
startMatch();
