// The one clock of the player: how far the slide on show has got.

/** A frame that comes later than this did not run smoothly; the slide waits rather than jumps. */
const kLongestFrame = 100;

export class Clock {
  /**
   * @param {(time: number) => void} onTime called with milliseconds, on every frame while running
   *   and on every seek
   */
  constructor(onTime) {
    this.onTime = onTime;
    this.time = 0;
    this.running = false;
    /** While held, time moves only by seek(). */
    this.held = false;
    this.frame = 0;
    this.last = 0;
  }

  start() {
    this.running = true;
    this.schedule();
  }

  stop() {
    this.running = false;
    cancelAnimationFrame(this.frame);
    this.frame = 0;
    this.last = 0;
  }

  /** @param {number} time */
  seek(time) {
    this.time = Math.max(time, 0);
    this.onTime(this.time);
  }

  hold() {
    this.held = true;
    cancelAnimationFrame(this.frame);
    this.frame = 0;
  }

  release() {
    this.held = false;
    this.last = 0;
    if (this.running) this.schedule();
  }

  schedule() {
    if (!this.held && this.frame === 0) this.frame = requestAnimationFrame((now) => this.turn(now));
  }

  /** @param {number} now */
  turn(now) {
    this.frame = 0;
    const step = this.last === 0 ? 0 : Math.min(now - this.last, kLongestFrame);
    this.last = now;
    // Before the call-back: what it does, such as stopping, has the last word.
    this.schedule();
    this.seek(this.time + step);
  }
}
