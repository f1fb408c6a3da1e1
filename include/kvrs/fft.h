/* placeholder
 * SPDX-License-Identifier: MIT */
