import { startLook } from './look/look.mjs';
import { startMatch } from './match/match.mjs';
import { startPicture } from './picture/picture.mjs';
import { startTabs } from './tabs.mjs';

startTabs();
startLook();
startPicture(document.querySelector('#picture-root'));
startMatch();
