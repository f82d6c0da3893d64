// SPDX-License-Identifier: Apache-2.0
// Nothing: the build precompiles the headers that all tests share, and needs a file to do it for.
