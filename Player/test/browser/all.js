// All browser tests in one process, with one browser.

import "./captions.test.js";
import "./folder.test.js";
import "./movie.test.js";
import "./pictures.test.js";
import "./reduced_motion.test.js";
import "./reload.test.js";
import "./stage.test.js";
import "./styles.test.js";
