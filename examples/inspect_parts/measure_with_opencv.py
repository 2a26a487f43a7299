#!/usr/bin/env python3
"""Measures the coins of a photograph with OpenCV, for comparison with inspect_parts.

measure_with_opencv.py PHOTO > opencv.csv     (Debian: python3-opencv)

Nothing is shared with the example: the photograph is flooded from seeds, sure coin and sure
background, over the smallest steps of grey first, until both meet where the steps are highest;
connected components are counted.
A pixel of the ridge line itself belongs to neither side and counts half. So areas are sums of
pixels, and centroids are means of pixel centres, which lie at whole numbers.
"""
import sys

import cv2
import numpy


def disc(width):
    return cv2.getStructuringElement(cv2.MORPH_ELLIPSE, (width, width))


photograph = cv2.imread(sys.argv[1], cv2.IMREAD_GRAYSCALE)
smooth = cv2.GaussianBlur(photograph, (5, 5), 1.0)

# Seeds: what is brighter than its surroundings, holes filled, is coin in its inner places and
# ground in its outer ones; the flood decides about the three pixels on either side.
level = smooth.astype(numpy.float32)
bright = numpy.where(level > cv2.blur(level, (81, 81)) + 12, 255, 0).astype(numpy.uint8)
outlines, _ = cv2.findContours(bright, cv2.RETR_EXTERNAL, cv2.CHAIN_APPROX_NONE)
cv2.drawContours(bright, outlines, -1, 255, cv2.FILLED)
bright = cv2.morphologyEx(bright, cv2.MORPH_OPEN, disc(9))
seeds = numpy.zeros(photograph.shape, numpy.int32)
seeds[cv2.dilate(bright, disc(7)) == 0] = 1
seeds[cv2.erode(bright, disc(7)) == 255] = 2
flooded = cv2.watershed(cv2.merge([smooth] * 3), seeds)

coins = numpy.where(flooded == 2, 255, 0).astype(numpy.uint8)
coins = cv2.morphologyEx(coins, cv2.MORPH_OPEN, disc(9))
count, labels, stats, _ = cv2.connectedComponentsWithStats(coins, connectivity=4)

print("area,x,y")
for label in range(1, count):
    if stats[label, cv2.CC_STAT_AREA] < 500:  # specks
        continue
    coin = (labels == label).astype(numpy.uint8)
    with_line = cv2.dilate(coin, cv2.getStructuringElement(cv2.MORPH_CROSS, (3, 3)))
    moments = cv2.moments((coin + with_line).astype(numpy.float32) / 2)
    area = moments["m00"]
    print(f"{area:.1f},{moments['m10'] / area:.2f},{moments['m01'] / area:.2f}")
