// SPDX-License-Identifier: BSL-1.0
#pragma once
