// All browser tests in one process, with one browser.

import "./captions.test.js";
import "./movie.test.js";
import "./reload.test.js";
import "./stage.test.js";
import "./styles.test.js";
