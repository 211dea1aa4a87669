// How far two pictures differ, with the measures of lottie/pictures.

/** Pairs that people call equal in lottie-web stay within these at 400 pixels; its anti-aliasing changes with groups. */
const kLimits = { mean: 0.3, share: 0.01, ssim: 0.995 };

/** @returns how many times over the limits; at most 1 looks equal. */
export function badness(difference) {
  return Math.max(difference.mean / kLimits.mean, difference.share / kLimits.share,
                  (1 - difference.ssim) / (1 - kLimits.ssim));
}

function lumas(picture) {
  const values = new Float64Array(picture.width * picture.height);
  for (let i = 0; i < values.length; ++i) {
    values[i] = 0.299 * picture.data[4 * i] + 0.587 * picture.data[4 * i + 1] + 0.114 * picture.data[4 * i + 2];
  }
  return values;
}

/** Structural similarity of one block; the constants are the usual ones for 8 bits. */
function blockSimilarity(a, b, width, left, top, right, bottom) {
  const kC1 = (0.01 * 255) ** 2, kC2 = (0.03 * 255) ** 2;
  let sumA = 0, sumB = 0, sumAA = 0, sumBB = 0, sumAB = 0;
  for (let y = top; y < bottom; ++y) {
    for (let x = left; x < right; ++x) {
      const p = a[y * width + x], q = b[y * width + x];
      sumA += p, sumB += q, sumAA += p * p, sumBB += q * q, sumAB += p * q;
    }
  }
  const count = (right - left) * (bottom - top);
  const meanA = sumA / count, meanB = sumB / count;
  const varianceA = sumAA / count - meanA * meanA, varianceB = sumBB / count - meanB * meanB;
  const covariance = sumAB / count - meanA * meanB;
  return (2 * meanA * meanB + kC1) * (2 * covariance + kC2) /
         ((meanA * meanA + meanB * meanB + kC1) * (varianceA + varianceB + kC2));
}

function similarity(a, b) {
  const kBlock = 8;
  const { width, height } = a;
  const lumaA = lumas(a), lumaB = lumas(b);
  let sum = 0, blocks = 0;
  for (let y = 0; y < height; y += kBlock) {
    for (let x = 0; x < width; x += kBlock, ++blocks) {
      sum += blockSimilarity(lumaA, lumaB, width, x, y, Math.min(x + kBlock, width), Math.min(y + kBlock, height));
    }
  }
  return sum / blocks;
}

/**
 * @param a,b opaque pictures of one size: width, height, data (RGBA, rows from the top)
 * @returns mean over all channels (0..255), share of pixels with a channel more than 8 apart, ssim over 8 x 8 blocks
 */
export function difference(a, b) {
  if (a.width !== b.width || a.height !== b.height) throw new Error("pictures of two sizes cannot be compared");
  if (Buffer.compare(a.data, b.data) === 0) return { mean: 0, share: 0, ssim: 1 };
  let sum = 0, beyond = 0;
  for (let i = 0; i < a.data.length; i += 4) {
    let worst = 0;
    for (let c = i; c < i + 3; ++c) {
      const apart = Math.abs(a.data[c] - b.data[c]);
      sum += apart;
      worst = Math.max(worst, apart);
    }
    if (worst > 8) ++beyond;
  }
  const count = a.width * a.height;
  return { mean: sum / (3 * count), share: beyond / count, ssim: similarity(a, b) };
}

/**
 * @param before,after pictures by frame
 * @returns the difference at the frame where it is furthest over the limits, and whether all frames look equal
 */
export function compareFrames(before, after) {
  let worst = null;
  for (const [frame, picture] of before) {
    const one = { worstFrame: frame, ...difference(picture, after.get(frame)) };
    if (worst === null || badness(one) > badness(worst)) worst = one;
  }
  if (worst === null) throw new Error("no frame to compare");
  return { frames: before.size, equal: badness(worst) <= 1, ...worst };
}
